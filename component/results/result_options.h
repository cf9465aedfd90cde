#pragma once

#include "component/host/sv_string.h"

/// Form of a result view.
enum MeroDisplayKind : int {
    DisplayNothing = 1,
    DisplayDetail = 2,   ///< a row for every path
    DisplayTotal = 3,    ///< a row for every object, its values added up
    DisplayHistory = 4,  ///< curves over time
};

/// How a super agent's results are displayed: extremes, sum and grouping, each with whether its control is
/// shown and may be changed.
struct MeroResultOptions {
    bool extremeChecked = true;
    bool extremeVisible = true;
    bool extremeEnabled = true;
    bool sumChecked = false;
    bool sumVisible = true;
    bool sumEnabled = true;
    bool groupChecked = false;
    bool groupVisible = true;
    bool groupEnabled = true;
    SV::String groupClass;     ///< class of the objects that results are grouped over
    SV::String groupRelation;  ///< relation class that leads to them

    friend bool operator==(const MeroResultOptions&, const MeroResultOptions&) = default;
};
