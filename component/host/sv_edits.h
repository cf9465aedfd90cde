#pragma once

#include <cstddef>
#include <cstdint>

#include "component/host/sv_window.h"

namespace SV {

class FixedText : public Control {
public:
    FixedText(Window* parent, ResId id);
};

/// A frame with a title around other controls.
class GroupBox : public Control {
public:
    GroupBox(Window* parent, ResId id);
};

/// Part of a text, in bytes.
struct Selection {
    std::size_t begin = 0;
    std::size_t end = 0;
    friend constexpr bool operator==(const Selection&, const Selection&) = default;
};

class Edit : public Control {
public:
    Edit(Window* parent, ResId id);

    void SetSelection(const Selection& newSelection);
    [[nodiscard]] const Selection& GetSelection() const { return selection; }
    [[nodiscard]] String GetSelected() const;
    /// The selected part, or nothing at the cursor, gives way to `text`; the cursor stands behind it.
    void ReplaceSelected(const String& text);
    void SetReadOnly(bool on = true);
    [[nodiscard]] bool IsReadOnly() const { return readOnly; }
    void SetMaxTextLen(int codePoints) { maximumLength = codePoints; }
    [[nodiscard]] int GetMaxTextLen() const { return maximumLength; }
    void SetModifyHdl(Handler handler) { modifyHandler = std::move(handler); }

    /// The whole text as the user left it.
    bool userType(const String& newText);
    void userSelect(const Selection& newSelection) { selection = newSelection; }

protected:
    Edit(Window* parent, ResId id, ControlClass kind) : Control(parent, id, kind) {}
    void pullState(const FormState& initial) override;

private:
    Selection selection;
    int maximumLength = 0;
    bool readOnly = false;
    Handler modifyHandler;
};

/// Lines end with "\n".
class MultiLineEdit : public Edit {
public:
    MultiLineEdit(Window* parent, ResId id);
};

/// Whole number within a range.
class NumericField : public Control {
public:
    NumericField(Window* parent, ResId id);

    /// Brought into the range.
    void SetValue(std::int32_t newValue);
    [[nodiscard]] std::int32_t GetValue() const { return value; }
    void SetMin(std::int32_t newMinimum);
    void SetMax(std::int32_t newMaximum);
    [[nodiscard]] std::int32_t GetMin() const { return minimum; }
    [[nodiscard]] std::int32_t GetMax() const { return maximum; }
    void SetModifyHdl(Handler handler) { modifyHandler = std::move(handler); }

    bool userEnter(std::int32_t newValue);

protected:
    void pullState(const FormState& initial) override;

private:
    std::int32_t value = 0;
    std::int32_t minimum = 0;
    std::int32_t maximum = 999999999;
    Handler modifyHandler;
};

}  // namespace SV
