#pragma once

#include <memory>

#include "component/host/sv_string.h"

/// Parser of Kiln text: a sequence of elements, each an upper-case keyword with an optional string value and
/// attributes that are flags, `key:modifier` or `key:"string"`.
class MeroKilnParser {
public:
    /// `source` and `name` label error messages.
    MeroKilnParser(const SV::String& text, const SV::String& source, const SV::String& name);
    MeroKilnParser(MeroKilnParser&&) noexcept;
    MeroKilnParser& operator=(MeroKilnParser&&) noexcept;
    MeroKilnParser(const MeroKilnParser&) = delete;
    MeroKilnParser& operator=(const MeroKilnParser&) = delete;
    ~MeroKilnParser();

    /// 0 if the text is good; the current element is then the first. An empty text is good and has no
    /// element.
    int Parse();
    /// Names source, line, column and what was expected; empty without an error.
    [[nodiscard]] SV::String GetErrorText() const;
    /// Shows what `Parse` found in an error box; nothing without an error.
    void ShowErrorBox() const;

    [[nodiscard]] int GetElemCount() const;
    [[nodiscard]] int GetCurElemIndex() const;
    /// False, and no change, for an index outside the elements.
    bool SetCurElemIndex(int index);

    // On the current element; empty or false without one.

    [[nodiscard]] SV::String GetKeyword() const;
    /// True for a flag, a modifier and a string of this key.
    [[nodiscard]] bool IsContained(const SV::String& key) const;
    /// Value of `key:"string"`; empty for a flag, a modifier and a key that isn't there.
    [[nodiscard]] SV::String GetStrValue(const SV::String& key) const;
    /// The element's own value.
    [[nodiscard]] SV::String GetStrValue() const;
    /// True if the element has a value of its own, be it empty.
    [[nodiscard]] bool HasStrValue() const;
    /// Word of `key:modifier`; empty for a flag, a string and a key that isn't there.
    [[nodiscard]] SV::String GetModifier(const SV::String& key) const;

    /// The value in double quotes, with a backslash before each double quote and each backslash.
    [[nodiscard]] static SV::String GetKilnTextOfStrValue(const SV::String& value);

private:
    struct Impl;
    std::unique_ptr<Impl> impl;
};
