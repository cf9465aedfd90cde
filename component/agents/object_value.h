#pragma once

#include "component/host/sv_string.h"

/// What was measured on one object inside one process instance: a first value, and a second one in agents
/// that need it.
class MeroAgentObjectValue {
public:
    double value = 0.0;  ///< a sum or a point in time

    /// 0.0 if it was never written.
    [[nodiscard]] double getSecondValue() const { return secondValue; }
    [[nodiscard]] bool hasSecondValue() const { return secondWritten; }
    void setSecondValue(double newValue) {
        secondValue = newValue;
        secondWritten = true;
    }

private:
    double secondValue = 0.0;
    bool secondWritten = false;
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
