#pragma once

#include <cmath>
#include <limits>

#include "component/host/sv_string.h"

/// What was measured on one object inside one process instance: a first value, and a second one in agents
/// that need it.
class MeroAgentObjectValue {
public:
    double value = 0.0;  ///< a sum or a point in time

    /// 0.0 if it was never written.
    [[nodiscard]] double getSecondValue() const { return hasSecondValue() ? secondValue : 0.0; }
    [[nodiscard]] bool hasSecondValue() const { return !std::isnan(secondValue); }
    void setSecondValue(double newValue) { secondValue = newValue; }

private:
    double secondValue = std::numeric_limits<double>::quiet_NaN();  ///< not a number: never written
};

/// A value with two texts.
class MeroAgentObjectValueString : public MeroAgentObjectValue {
public:
    void setFirstText(const SV::String& text) { firstText = text; }
    void setSecondText(const SV::String& text) { secondText = text; }
    [[nodiscard]] const SV::String& getFirstText() const { return firstText; }
    [[nodiscard]] const SV::String& getSecondText() const { return secondText; }

private:
    SV::String firstText;
    SV::String secondText;
};
