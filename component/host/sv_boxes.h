#pragma once

#include <functional>
#include <vector>

#include "component/host/sv_application.h"
#include "component/host/sv_edits.h"
#include "component/host/sv_string.h"

namespace SV {

enum class BoxKind { Message, Info, Query, Error };

/// Answers of boxes; a box that nobody answers ends as cancelled.
enum BoxAnswer : int { BoxCancelled = 0, BoxOk = 1, BoxYes = 2, BoxNo = 3 };

/// Style values that the agents pass.
inline constexpr int BoxStyleError = 16;
inline constexpr int BoxStyleQuery = 64;

struct BoxRecord {
    BoxKind kind;
    ResId message;  ///< of the text's first message; 0 for a text without one
    String text;
    int answer;
};

/// Every modal box of the program goes through here: it is answered by the installed responder, or else by
/// the toolkit, and recorded, in order.
class BoxDesk {
public:
    using Responder = std::function<int(BoxKind kind, Window* parent, int style, const String& text)>;

    static BoxDesk& GetGlobal();

    /// An empty responder leaves boxes to the toolkit; headless they stay unanswered.
    void setResponder(Responder newResponder) { responder = std::move(newResponder); }
    int execute(BoxKind kind, Window* parent, int style, const String& text);
    [[nodiscard]] const std::vector<BoxRecord>& getRecords() const { return records; }
    void clearRecords() { records.clear(); }

private:
    Responder responder;
    std::vector<BoxRecord> records;
};

/// Modal box with one text. `parent` isn't owned and may be null.
class MessBox {
public:
    MessBox(BoxKind boxKind, Window* parent, int style, const String& text)
        : kind(boxKind), parentWindow(parent), styleValue(style), message(text) {}
    int Execute();

private:
    BoxKind kind;
    Window* parentWindow;
    int styleValue;
    String message;
};

class InfoBox : public MessBox {
public:
    InfoBox(Window* parent, const String& text) : MessBox(BoxKind::Info, parent, 0, text) {}
};

/// A question; `Execute` gives `BoxYes`, `BoxNo` or `BoxCancelled`.
class QueryBox : public MessBox {
public:
    QueryBox(Window* parent, int style, const String& text) : MessBox(BoxKind::Query, parent, style, text) {}
};

}  // namespace SV

class MeroErrorBox : private SV::MessBox {
public:
    MeroErrorBox(SV::Window* parent, int style, const SV::String& text)
        : SV::MessBox(SV::BoxKind::Error, parent, style, text) {}
    /// `type` is always 0.
    int Execute([[maybe_unused]] int type) { return SV::MessBox::Execute(); }
};

class MeroInfoBox : public SV::InfoBox {
public:
    using SV::InfoBox::InfoBox;
};

class MeroQueryBox : public SV::QueryBox {
public:
    using SV::QueryBox::QueryBox;
};

/// Non-modal message window, shown during long work. It isn't recorded.
class MeroMessWin : public SV::Window {
public:
    MeroMessWin(SV::Window* parent, const SV::String& text);
    void SetText(const SV::String& text);

private:
    SV::FixedText label;
};
