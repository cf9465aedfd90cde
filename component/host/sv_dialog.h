#pragma once

#include <functional>
#include <vector>

#include "component/host/sv_window.h"

namespace SV {

/// Result of a dialog that nobody answered or that was cancelled.
inline constexpr int DialogCancelled = 0;
inline constexpr int DialogOk = 1;

/// A dialog that keeps the user from the windows that were there before it; those made while it runs can be
/// used.
class ModalDialog : public Window {
public:
    ModalDialog(Window* parent, ResId form) : Window(parent, form) {}

    /// Shows the dialog, and gives what `EndDialog` was called with.
    int Execute();
    virtual void EndDialog(int newResult);
    [[nodiscard]] bool IsInExecute() const { return inExecute; }
    [[nodiscard]] int GetResult() const { return result; }
    /// Escape and the frame's button come here: ends as cancelled.
    bool Close() override;

private:
    int result = DialogCancelled;
    bool inExecute = false;
};

/// A dialog that stays beside others, also beside a modal one.
class ModelessDialog : public Window {
public:
    ModelessDialog(Window* parent, ResId form) : Window(parent, form) {}
};

struct DialogRecord {
    ResId form;
    String title;  ///< as the dialog began
    int result;
};

/// Every modal dialog goes through here: it is answered by the installed responder, if there is one, and
/// recorded, in order.
class DialogDesk {
public:
    /// Drives the dialog by its controls. If it returns while the dialog still runs, that ends as cancelled.
    using Responder = std::function<void(ModalDialog& dialog)>;

    static DialogDesk& GetGlobal();

    /// An empty responder leaves dialogs to the toolkit; headless they end as cancelled.
    void setResponder(Responder newResponder) { responder = std::move(newResponder); }
    [[nodiscard]] const Responder& getResponder() const { return responder; }
    [[nodiscard]] const std::vector<DialogRecord>& getRecords() const { return records; }
    void clearRecords() { records.clear(); }

    /// Gives the path that a file dialog with this title ends with; empty cancels.
    using FileResponder = std::function<String(const String& title, bool forSaving)>;
    void setFileResponder(FileResponder newResponder) { fileResponder = std::move(newResponder); }
    [[nodiscard]] const FileResponder& getFileResponder() const { return fileResponder; }

private:
    friend class ModalDialog;
    Responder responder;
    FileResponder fileResponder;
    std::vector<DialogRecord> records;
};

}  // namespace SV

class MeroModalDialog : public SV::ModalDialog {
public:
    using SV::ModalDialog::ModalDialog;
};

class MeroModelessDialog : public SV::ModelessDialog {
public:
    using SV::ModelessDialog::ModelessDialog;
};
