#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "component/host/sv_string.h"
#include "component/host/types.h"

namespace SV {

class Control;
class ModalDialog;
class PopupMenu;
class Timer;
class Window;
enum class BoxKind;

/// What of a window or control has changed.
enum class Aspect : std::uint8_t {
    Text,
    Enabled,
    Visible,
    ReadOnly,
    Focus,
    Position,
    Size,
    MinimumSize,
    Minimized,
    Front,  ///< asked to come to the front
    Picture,
    Checked,
    Range,
    TextSelection,
    ItemsInserted,  ///< `position`, `count`; in a tree below the entry `item`
    ItemsRemoved,
    ItemsCleared,
    ItemChanged,
    Selection,
    Expanded,     ///< entry or row `item`; all if `item` is -1
    CurrentPage,  ///< page `item` of a tab control
    PageText,
    Objects,      ///< a browser got a table, or rows or columns were added to it
    Field,        ///< row `position`, column `count`
    ColumnWidth,  ///< column `position`
    Found,        ///< row `position` of a browser has to come into sight
    Copied,       ///< the selected rows of a browser go to the clipboard
    Curves,
    Points,  ///< curve `item` has more points
    Drawing  ///< anything else that is drawn anew as a whole
};

struct Change {
    Aspect aspect;
    int position = 0;
    int count = 0;
    MeroId item = 0;
};

/// Mirrors the state of one window or control in a widget. It holds no logic: it reads the state when it is
/// told of a change, and calls the `user…` operations for what the user does. A change that a `user…`
/// operation makes is told to the peer too.
class Peer {
public:
    Peer() = default;
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;
    virtual ~Peer() = default;

    virtual void changed(const Change& change) = 0;
};

/// Initial state of a control, as the form of its window gives it.
struct FormState {
    String text;
    String toolTip;
    std::vector<String> items;
    bool enabled = true;
    bool visible = true;
    bool checked = false;
    bool readOnly = false;
    int radioGroup = 0;  ///< radio buttons with the same number exclude each other; 0 for none
    int minimum = 0;
    int maximum = 0;
    int maximumLength = 0;  ///< 0 for any
};

/// Kind of a control; says which widget of a form can show it.
enum class ControlClass : std::uint8_t {
    FixedText,
    GroupBox,
    Edit,
    MultiLineEdit,
    NumericField,
    ListBox,
    MultiListBox,
    CheckBox,
    RadioButton,
    PushButton,
    TreeListBox,
    TabControl,
    ToolBox,
    SizingGrip,
    StatusBar,
    Browser,
    FunctionGraph,
    FunctionGraphLegend,
    Diagram,
    ScrollableControl
};

/// What shows windows and asks the user. There always is one: the headless toolkit, which reads the same
/// forms and shows nothing, until another is installed.
///
/// A window with a form has its peer, and thereby the form, when its own constructor has run; a control binds
/// at the end of its constructor: it pulls its initial state from the form, and from then on it pushes its
/// changes to its peer.
class Toolkit {
public:
    Toolkit() = default;
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;
    virtual ~Toolkit() = default;

    [[nodiscard]] static Toolkit& GetGlobal();
    /// Not owned; null for the headless one. Gives the one before. Windows have to be made after it.
    static Toolkit* SetGlobal(Toolkit* toolkit);

    /// `initial` gets text and flags that the form has for the window. May give null.
    virtual std::unique_ptr<Peer> makeWindowPeer(Window& window, ResId form, FormState& initial) = 0;
    /// A control that the form of its window doesn't hold, or holds as another class, is an internal error.
    /// A control with identifier 0 is none of the form's. May give null.
    virtual std::unique_ptr<Peer> makeControlPeer(Control& control, FormState& initial) = 0;

    /// Returns when the dialog has ended.
    virtual void runModal(ModalDialog& dialog) = 0;
    /// Gives a `BoxAnswer`.
    virtual int runBox(BoxKind kind, Window* parent, int style, const String& text) = 0;
    /// Identifier of the chosen item, or 0.
    virtual int runMenu(Window* parent, const PopupMenu& menu) = 0;
    /// Path to write to or read from; empty if cancelled. `nameFilter` as in "*.txt".
    virtual String chooseFile(Window* parent, const String& title, const String& nameFilter,
                              const String& directory, bool forSaving) = 0;
    /// Help of a window, by its help identifier.
    virtual void showHelp(Window& window) = 0;
    virtual void setWait(bool on) = 0;
    virtual void startTimer(Timer& timer) = 0;
    virtual void stopTimer(Timer& timer) = 0;
    /// Width in pixels.
    [[nodiscard]] virtual int textWidth(const String& text) = 0;
    /// Width of a field of a table as it is shown, which may be longer than its text.
    [[nodiscard]] virtual int fieldWidth(const String& field) { return textWidth(field); }
    /// False if no printer, nor a file to print to, is there.
    [[nodiscard]] virtual bool hasPrinter() = 0;
    /// Prints a page description in HTML. False if cancelled or failed.
    virtual bool printDocument(Window* parent, const String& title, const String& html) = 0;
};

}  // namespace SV
