#include "platform/toolkit/qt/icons.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>
#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "platform/toolkit/qt/text_conversion.h"

namespace mero::qt {

namespace {

/// Draws lines in the colour of the text, so that icons follow light, dark and disabled.
class LineIconEngine : public QIconEngine {
public:
    explicit LineIconEngine(QByteArray svgDocument) : document(std::move(svgDocument)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::WindowText;
        const QColor color = QApplication::palette().color(group, role);
        QSvgRenderer renderer(QByteArray(document).replace("currentColor", color.name().toLatin1()));
        painter->setRenderHint(QPainter::Antialiasing);
        renderer.render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap image(size);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        paint(&painter, QRect({}, size), mode, state);
        return image;
    }

    [[nodiscard]] QIconEngine* clone() const override {
        return std::make_unique<LineIconEngine>(document).release();
    }

private:
    QByteArray document;
};

/// Icon files of the pictures of the resource module.
constexpr std::array<std::pair<std::uint32_t, std::string_view>, 6> ResourceIcons{
    {{0x2004F48, "table"},
     {0x2004FA7, "clock"},
     {0x2005043, "agent_active"},
     {0x2005044, "agent_inactive"},
     {0x2005045, "agent_invalid"},
     {0x200504A, "info"}}};

/// Icon files of the pictures of the image pool.
const std::map<std::string_view, std::string_view>& poolIcons() {
    static const std::map<std::string_view, std::string_view> icons{
        {"selbox/unknow2.png", "unknown"},
        {"business-process-16.png", "process"},
        {"working-environment-16.png", "environment"},
        {"company-map-16.png", "map"}};
    return icons;
}

}  // namespace

QIcon namedIcon(std::string_view name) {
    const auto sources = iconSources();
    auto place = std::ranges::find(sources, name, &IconSource::name);
    if (place == sources.end()) {
        place = std::ranges::find(sources, std::string_view("unknown"), &IconSource::name);
    }
    const QByteArray document(place->document.data(), static_cast<qsizetype>(place->document.size()));
    return QIcon(std::make_unique<LineIconEngine>(document).release());
}

QIcon iconOf(const SV::Image& image) {
    if (image.IsEmpty()) {
        return {};
    }
    if (image.GetResource().value != 0) {
        const auto place = std::ranges::find(ResourceIcons, image.GetResource().value,
                                             [](const auto& each) { return each.first; });
        return namedIcon(place != ResourceIcons.end() ? place->second : "unknown");
    }
    const auto place = poolIcons().find(image.GetName().view());
    return namedIcon(place != poolIcons().end() ? place->second : image.GetName().view());
}

}  // namespace mero::qt
