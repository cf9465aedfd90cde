#pragma once

#include "component/host/core_variables.h"
#include "component/host/kiln_parser.h"
#include "component/host/sv_string.h"
#include "component/host/types.h"

/// A class or attribute that an agent's section names, with whether its control is shown and may be changed:
/// a keyword, "hide-" and "lock-" keywords. The name is kept as an identifier.
class MeroNamedOption {
public:
    /// `optionKeyword` lives as long as the program.
    explicit MeroNamedOption(const char* optionKeyword) : keyword(optionKeyword) {}

    [[nodiscard]] MeroId getId() const { return id; }
    void clear() { id = MeroNoId; }
    void setDefaultValues();
    void readFlags(const MeroKilnParser& parser);
    void appendFlags(SV::String& text) const;
    [[nodiscard]] bool isNamed(const MeroKilnParser& parser) const { return parser.IsContained(keyword); }

    /// The class of this name in the library; none without the keyword. 1, or 15 with a box for an unknown
    /// name.
    int readClass(const MeroKilnParser& parser, const SV::String& agentName, MeroCoreVarConstType library);
    /// The attribute of this name; none without the keyword. 1, or 15 with a box for an unknown name.
    int readAttribute(const MeroKilnParser& parser, const SV::String& agentName, MeroId classId);

    /// A line with the name, left out without one or if it can't be read.
    void appendClass(SV::String& text) const;
    void appendAttribute(SV::String& text) const;
    [[nodiscard]] bool isEqualClass(const MeroKilnParser& parser) const;
    [[nodiscard]] bool isEqualAttribute(const MeroKilnParser& parser) const;

private:
    [[nodiscard]] SV::String className() const;
    [[nodiscard]] SV::String attributeName() const;
    void appendName(SV::String& text, const SV::String& name) const;

    const char* keyword;
    MeroId id = MeroNoId;
    bool visible = true;
    bool editable = true;
};
