#include "platform/interchange/xes_reader.h"

#include <fmt/format.h>
#include <optional>
#include <utility>
#include <vector>

#include "platform/interchange/document_refused.h"
#include "platform/interchange/xes_tags.h"

namespace mero {

namespace {

constexpr std::size_t DeepestElement = 200;

bool isAttributeName(std::string_view name) {
    return name == "string" || name == "date" || name == "int" || name == "float" || name == "boolean" ||
           name == "id";
}

}  // namespace

class XesReader::Implementation {
public:
    Implementation(std::istream& input, std::string name) : tags(input), source(std::move(name)) {}

    Result<XesStep> next(XesEvent& event) {
        try {
            return step(event);
        } catch (const DocumentRefused& refused) {
            const std::size_t line = tags.line();
            return Error{fmt::format("{}:{}:{}: {}", source, line, tags.column(), refused.what())};
        }
    }

    std::string logName;
    bool emptyTrace = false;  ///< the trace that has just begun has ended as well

private:
    enum class Level { Document, Log, Trace, Event };

    XesStep step(XesEvent& event) {
        XesTag tag;
        while (tags.next(tag, !elements.empty())) {
            if (tag.closes) {
                if (const auto closed = close(tag, event); closed) {
                    return *closed;
                }
                continue;
            }
            if (const auto opened = open(tag, event); opened) {
                return *opened;
            }
        }
        if (!ended) {
            throw DocumentRefused(elements.empty() ? "no XES log: there is no element \"log\""
                                                   : fmt::format("\"{}\" isn't closed", elements.back()));
        }
        return XesStep::LogEnd;
    }

    std::optional<XesStep> open(const XesTag& tag, XesEvent& event) {
        const bool atLevel = elements.size() == static_cast<std::size_t>(level);
        if (level == Level::Document) {
            requireLog(tag);
            level = Level::Log;
        } else if (atLevel && tag.name == "trace" && level == Level::Log) {
            level = Level::Trace;
        } else if (atLevel && tag.name == "event" && level == Level::Trace) {
            level = Level::Event;
            current = XesEvent{};
            fallbackActivity.clear();
            fallbackResource.clear();
            current.line = tags.line();
        } else if (atLevel && tag.name == "event" && level == Level::Log) {
            throw DocumentRefused("an event outside of a trace has no case");
        } else if (atLevel && isAttributeName(tag.name)) {
            readAttribute(tag);
        }
        if (tag.empty) {
            return leave(elements.size() + 1, tag, event);
        }
        if (elements.size() >= DeepestElement) {
            throw DocumentRefused("the elements are nested too deeply");
        }
        elements.emplace_back(tag.name);
        if (level == Level::Trace && elements.size() == 2) {
            return XesStep::TraceBegin;
        }
        return std::nullopt;
    }

    void requireLog(const XesTag& root) const {
        if (ended) {
            throw DocumentRefused(
                fmt::format("a second root element, \"{}\"; a file holds one log", root.name));
        }
        if (root.name != "log") {
            throw DocumentRefused(fmt::format("expected the element \"log\", found \"{}\"", root.name));
        }
    }

    std::optional<XesStep> close(const XesTag& tag, XesEvent& event) {
        if (elements.empty() || elements.back() != tag.name) {
            throw DocumentRefused(fmt::format("\"{}\" is closed where {} is open", tag.name,
                                              elements.empty() ? "nothing" : '"' + elements.back() + '"'));
        }
        const std::size_t depth = elements.size();
        elements.pop_back();
        return leave(depth, tag, event);
    }

    /// The element of this depth, the log having 1, has ended.
    std::optional<XesStep> leave(std::size_t depth, const XesTag& tag, XesEvent& event) {
        if (depth != static_cast<std::size_t>(level)) {
            return std::nullopt;
        }
        switch (level) {
            case Level::Log:
                level = Level::Document;
                ended = true;
                return std::nullopt;
            case Level::Trace:
                level = Level::Log;
                if (tag.empty) {
                    emptyTrace = true;
                    return XesStep::TraceBegin;
                }
                return XesStep::TraceEnd;
            case Level::Event:
                level = Level::Trace;
                finishEvent(event);
                return XesStep::Event;
            case Level::Document:
                break;
        }
        return std::nullopt;
    }

    void finishEvent(XesEvent& event) {
        if (current.activity.empty()) {
            current.activity.swap(fallbackActivity);
        }
        if (current.resource.empty()) {
            current.resource.swap(fallbackResource);
        }
        std::swap(event, current);
    }

    [[nodiscard]] std::string* placeOf(std::string_view key) {
        if (level == Level::Log) {
            return key == "concept:name" ? &logName : nullptr;
        }
        if (level != Level::Event) {
            return nullptr;
        }
        const std::pair<std::string_view, std::string*> places[] = {
            {"concept:name", &current.activity},
            {"org:resource", &current.resource},
            {"lifecycle:transition", &current.transition},
            {"time:timestamp", &current.time},
            {"start_timestamp", &current.start},
            {"org:role", &current.role},
            {"org:group", &current.group},
            {"Activity", &fallbackActivity},
            {"activity", &fallbackActivity},
            {"Resource", &fallbackResource},
            {"resource", &fallbackResource},
        };
        for (const auto& [known, place] : places) {
            if (key == known) {
                return place;
            }
        }
        return nullptr;
    }

    void readAttribute(const XesTag& tag) {
        std::string* const place = placeOf(XesTags::attributeOf(tag.attributes, "key"));
        if (place == nullptr) {
            return;
        }
        tags.setText(*place, XesTags::attributeOf(tag.attributes, "value"));
    }

    XesTags tags;
    std::string source;
    bool ended = false;
    Level level = Level::Document;
    std::vector<std::string> elements;
    XesEvent current;
    std::string fallbackActivity;
    std::string fallbackResource;
};

XesReader::XesReader(std::istream& input, std::string source)
    : implementation(std::make_unique<Implementation>(input, std::move(source))) {}

XesReader::~XesReader() = default;

Result<XesStep> XesReader::next(XesEvent& event) {
    if (implementation->emptyTrace) {
        implementation->emptyTrace = false;
        return XesStep::TraceEnd;
    }
    return implementation->next(event);
}

const std::string& XesReader::logName() const {
    return implementation->logName;
}

}  // namespace mero
