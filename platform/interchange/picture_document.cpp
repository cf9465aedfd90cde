#include "platform/interchange/picture_document.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "platform/interchange/document_node.h"
#include "platform/interchange/json_reader.h"

namespace mero {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view PictureFormatName = "mero-pictures";
constexpr int PictureFormatVersion = 1;
constexpr std::string_view KindProcess = "process";
constexpr std::string_view KindBars = "bars";
constexpr std::string_view KindCurves = "curves";
constexpr std::string_view UnitSeconds = "seconds";
constexpr std::string_view UnitNumber = "number";

/// Words of the kinds of shape, in the order of their numbers.
constexpr std::array<std::string_view, 11> ShapeWords{"pool",      "lane",         "activity",  "call",
                                                      "start",     "intermediate", "end",       "exclusive",
                                                      "inclusive", "parallel",     "eventBased"};

Json jsonOf(const DrawLine& line) {
    Json points = Json::array();
    for (const DrawPoint& point : line) {
        points.push_back({point.x, point.y});
    }
    return points;
}

Json jsonOf(const DrawRect& rect) {
    return {rect.x, rect.y, rect.width, rect.height};
}

Json jsonOf(const DiagramShape& shape) {
    return {{"object", shape.object},
            {"kind", ShapeWords.at(static_cast<std::size_t>(shape.kind))},
            {"bounds", jsonOf(shape.bounds)},
            {"label", shape.label},
            {"marker", shape.marker},
            {"loop", shape.loop},
            {"host", shape.host},
            {"interrupting", shape.isInterrupting},
            {"throwing", shape.isThrowing},
            {"expanded", shape.isExpanded}};
}

Json jsonOf(const DiagramEdge& edge) {
    return {{"relation", edge.relation},
            {"from", edge.from},
            {"to", edge.to},
            {"points", jsonOf(edge.points)},
            {"label", edge.label},
            {"default", edge.isDefault},
            {"taken", edge.taken ? Json(*edge.taken) : Json(nullptr)}};
}

std::string_view wordOf(MeasureOverlay::Unit unit) {
    return unit == MeasureOverlay::Unit::Seconds ? UnitSeconds : UnitNumber;
}

MeasureOverlay::Unit unitOf(const DocumentNode& node) {
    return node.text() == UnitSeconds ? MeasureOverlay::Unit::Seconds : MeasureOverlay::Unit::Number;
}

Json captionOf(const ChartCaption& caption) {
    return {{"title", caption.title},
            {"context", caption.context},
            {"unit", wordOf(caption.unit)},
            {"daysPerYear", caption.daysPerYear},
            {"hoursPerDay", caption.hoursPerDay}};
}

Json jsonOf(const MeasureOverlay& measure) {
    Json values = Json::array();
    for (const auto& [object, value] : measure.values) {
        values.push_back({object, value});
    }
    return {{"agent", measure.agent},
            {"caption", captionOf({measure.measure, measure.context, measure.unit, measure.daysPerYear,
                                   measure.hoursPerDay})},
            {"values", std::move(values)}};
}

Json contentOf(const ProcessPicture& picture) {
    Json shapes = Json::array();
    for (const DiagramShape& shape : picture.diagram.shapes) {
        shapes.push_back(jsonOf(shape));
    }
    Json edges = Json::array();
    for (const DiagramEdge& edge : picture.diagram.edges) {
        edges.push_back(jsonOf(edge));
    }
    return {{"kind", KindProcess},
            {"model", picture.diagram.name},
            {"extent", jsonOf(picture.diagram.extent)},
            {"shapes", std::move(shapes)},
            {"edges", std::move(edges)},
            {"measure", jsonOf(picture.measure)}};
}

Json contentOf(const BarPicture& picture) {
    Json items = Json::array();
    for (const BarPicture::Item& item : picture.items) {
        items.push_back({{"label", item.label}, {"values", item.values}});
    }
    return {{"kind", KindBars},
            {"caption", captionOf(picture.caption)},
            {"legend", picture.legend},
            {"items", std::move(items)}};
}

Json contentOf(const CurvePicture& picture) {
    Json curves = Json::array();
    for (const CurvePicture::Curve& curve : picture.curves) {
        curves.push_back({{"name", curve.name}, {"points", jsonOf(curve.points)}});
    }
    return {{"kind", KindCurves},
            {"caption", captionOf(picture.caption)},
            {"abscissa", wordOf(picture.abscissa)},
            {"curves", std::move(curves)}};
}

/// Exactly `Count` numbers.
template <std::size_t Count>
std::array<double, Count> numbersOf(const DocumentNode& node) {
    const std::vector<DocumentNode> list = node.list();
    if (list.size() != Count) {
        node.refuse("a list of another length was expected");
    }
    std::array<double, Count> numbers{};
    std::transform(list.begin(), list.end(), numbers.begin(),
                   [](const DocumentNode& entry) { return entry.number(); });
    return numbers;
}

DrawLine lineOf(const DocumentNode& node) {
    DrawLine line;
    for (const DocumentNode& point : node.list()) {
        const auto [x, y] = numbersOf<2>(point);
        line.push_back({x, y});
    }
    return line;
}

DrawRect rectOf(const DocumentNode& node) {
    const auto [x, y, width, height] = numbersOf<4>(node);
    return {x, y, width, height};
}

DiagramShape shapeOf(const DocumentNode& node) {
    const std::string word = node.at("kind").text();
    const auto* const kind = std::find(ShapeWords.begin(), ShapeWords.end(), word);
    if (kind == ShapeWords.end()) {
        node.at("kind").refuse("no kind of shape");
    }
    DiagramShape shape;
    shape.object = node.at("object").integer();
    shape.kind = static_cast<ShapeKind>(kind - ShapeWords.begin());
    shape.bounds = rectOf(node.at("bounds"));
    shape.label = node.at("label").text();
    shape.marker = node.at("marker").text();
    shape.loop = node.at("loop").text();
    shape.host = node.at("host").integer();
    shape.isInterrupting = node.at("interrupting").flag();
    shape.isThrowing = node.at("throwing").flag();
    shape.isExpanded = node.at("expanded").flag();
    return shape;
}

DiagramEdge edgeOf(const DocumentNode& node) {
    DiagramEdge edge{node.at("relation").integer(), node.at("from").integer(), node.at("to").integer(),
                     lineOf(node.at("points")),     node.at("label").text(),   node.at("default").flag()};
    if (const DocumentNode taken = node.at("taken"); !taken.json().is_null()) {
        edge.taken = taken.number();
    }
    if (edge.points.size() < 2) {
        node.at("points").refuse("a line needs two points");
    }
    return edge;
}

ChartCaption captionOf(const DocumentNode& node) {
    return {node.at("title").text(), node.at("context").text(), unitOf(node.at("unit")),
            node.at("daysPerYear").number(), node.at("hoursPerDay").number()};
}

MeasureOverlay measureOf(const DocumentNode& node) {
    const ChartCaption caption = captionOf(node.at("caption"));
    MeasureOverlay measure{node.at("agent").text(),
                           caption.title,
                           caption.unit,
                           caption.context,
                           caption.daysPerYear,
                           caption.hoursPerDay,
                           {}};
    for (const DocumentNode& entry : node.listAt("values")) {
        const auto [object, value] = numbersOf<2>(entry);
        measure.values[static_cast<MeroId>(object)] = value;
    }
    return measure;
}

ProcessPicture processOf(const DocumentNode& node) {
    ProcessPicture picture;
    picture.diagram.name = node.at("model").text();
    picture.diagram.extent = rectOf(node.at("extent"));
    for (const DocumentNode& shape : node.listAt("shapes")) {
        picture.diagram.shapes.push_back(shapeOf(shape));
    }
    for (const DocumentNode& edge : node.listAt("edges")) {
        picture.diagram.edges.push_back(edgeOf(edge));
    }
    picture.measure = measureOf(node.at("measure"));
    return picture;
}

BarPicture barsOf(const DocumentNode& node) {
    BarPicture picture{captionOf(node.at("caption")), {}, {}};
    for (const DocumentNode& entry : node.listAt("legend")) {
        picture.legend.push_back(entry.text());
    }
    for (const DocumentNode& entry : node.listAt("items")) {
        BarPicture::Item item{entry.at("label").text(), {}};
        for (const DocumentNode& value : entry.listAt("values")) {
            item.values.push_back(value.json().is_null() ? std::numeric_limits<double>::quiet_NaN()
                                                         : value.number());
        }
        if (item.values.size() != picture.legend.size()) {
            entry.refuse("as many values as legend entries were expected");
        }
        picture.items.push_back(std::move(item));
    }
    return picture;
}

CurvePicture curvesOf(const DocumentNode& node) {
    CurvePicture picture{captionOf(node.at("caption")), {}, unitOf(node.at("abscissa"))};
    for (const DocumentNode& curve : node.listAt("curves")) {
        picture.curves.push_back({curve.at("name").text(), lineOf(curve.at("points"))});
    }
    return picture;
}

Picture pictureOf(const DocumentNode& node) {
    const std::string kind = node.at("kind").text();
    Picture picture{node.at("name").text(), {}};
    if (kind == KindProcess) {
        picture.content = processOf(node);
    } else if (kind == KindBars) {
        picture.content = barsOf(node);
    } else if (kind == KindCurves) {
        picture.content = curvesOf(node);
    } else {
        node.at("kind").refuse("no kind of picture");
    }
    return picture;
}

}  // namespace

std::string writePictures(const std::vector<Picture>& pictures) {
    Json list = Json::array();
    for (const Picture& picture : pictures) {
        Json node{{"name", picture.name}};
        node.update(std::visit([](const auto& content) { return contentOf(content); }, picture.content));
        list.push_back(std::move(node));
    }
    const Json document{
        {"format", PictureFormatName}, {"version", PictureFormatVersion}, {"pictures", std::move(list)}};
    return document.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

Result<std::vector<Picture>> readPictures(std::string_view text, std::string_view source) {
    const Result<nlohmann::json> json = readJson(text, source);
    if (!json) {
        return json.error();
    }
    try {
        const DocumentNode root(json.value(), "");
        if (root.at("format").text() != PictureFormatName ||
            root.at("version").integer() != PictureFormatVersion) {
            root.refuse("no description of pictures that this program knows");
        }
        std::vector<Picture> pictures;
        for (const DocumentNode& node : root.listAt("pictures")) {
            pictures.push_back(pictureOf(node));
        }
        return pictures;
    } catch (const DocumentRefused& refused) {
        return Error{std::string(source) + ": " + refused.what()};
    }
}

}  // namespace mero
