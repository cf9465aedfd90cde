#pragma once

#include "component/host/sv_string.h"

namespace mero {

/// Messages of the workbench.
struct WorkbenchText {
    // Names of what it makes
    static constexpr SV::ResId MeasuresName{0x2013001};
    static constexpr SV::ResId MeasureFrequency{0x2013002};
    static constexpr SV::ResId MeasureCycleTime{0x2013003};
    static constexpr SV::ResId MeasureCosts{0x2013004};
    static constexpr SV::ResId MeasuresInfo{0x2013005};
    static constexpr SV::ResId AgentNotMade{0x2013006};
    static constexpr SV::ResId AgentNotChanged{0x2013007};

    // Window and menus
    static constexpr SV::ResId Title{0x2013010};
    static constexpr SV::ResId MenuFile{0x2013011};
    static constexpr SV::ResId MenuModel{0x2013012};
    static constexpr SV::ResId MenuView{0x2013013};
    static constexpr SV::ResId MenuRun{0x2013014};
    static constexpr SV::ResId New{0x2013015};
    static constexpr SV::ResId Open{0x2013016};
    static constexpr SV::ResId Import{0x2013017};
    static constexpr SV::ResId ImportWithParameters{0x2013018};
    static constexpr SV::ResId Recent{0x2013019};
    static constexpr SV::ResId Quit{0x201301A};
    static constexpr SV::ResId AddMeasures{0x201301B};
    static constexpr SV::ResId Activate{0x201301C};
    static constexpr SV::ResId Deactivate{0x201301D};
    static constexpr SV::ResId Fit{0x201301E};
    static constexpr SV::ResId ZoomIn{0x201301F};
    static constexpr SV::ResId ZoomOut{0x2013020};
    static constexpr SV::ResId Dark{0x2013021};
    static constexpr SV::ResId Simulate{0x2013022};
    static constexpr SV::ResId Cancel{0x2013023};
    static constexpr SV::ResId Results{0x2013024};
    static constexpr SV::ResId SavePicture{0x2013025};
    static constexpr SV::ResId AddAgent{0x2013026};

    // Files
    static constexpr SV::ResId RepositoryFiles{0x2013030};
    static constexpr SV::ResId ImportFiles{0x2013031};
    static constexpr SV::ResId ParameterFiles{0x2013032};
    static constexpr SV::ResId ChooseParameters{0x2013033};
    static constexpr SV::ResId NewTitle{0x2013034};
    static constexpr SV::ResId NotOpened{0x2013035};
    static constexpr SV::ResId NotImported{0x2013036};
    static constexpr SV::ResId Imported{0x2013037};
    static constexpr SV::ResId Opened{0x2013038};
    static constexpr SV::ResId PictureNotSaved{0x2013039};
    static constexpr SV::ResId PictureFiles{0x201303A};

    // Welcome page
    static constexpr SV::ResId WelcomeTitle{0x2013040};
    static constexpr SV::ResId WelcomeText{0x2013041};
    static constexpr SV::ResId OpenExample{0x2013042};
    static constexpr SV::ResId OpenExampleText{0x2013043};
    static constexpr SV::ResId ImportProcess{0x2013044};
    static constexpr SV::ResId ImportProcessText{0x2013045};
    static constexpr SV::ResId ImportLog{0x2013046};
    static constexpr SV::ResId ImportLogText{0x2013047};
    static constexpr SV::ResId OpenRepositoryText{0x2013048};

    // Models and diagram
    static constexpr SV::ResId Models{0x2013050};
    static constexpr SV::ResId NoModels{0x2013051};
    static constexpr SV::ResId NoAgents{0x2013052};
    static constexpr SV::ResId ColourBy{0x2013053};
    static constexpr SV::ResId NoColour{0x2013054};
    static constexpr SV::ResId NoMeasures{0x2013055};
    static constexpr SV::ResId NothingToDraw{0x2013056};
    static constexpr SV::ResId ShownValue{0x2013057};
    static constexpr SV::ResId NoValue{0x2013058};
    static constexpr SV::ResId AgentActive{0x2013059};
    static constexpr SV::ResId AgentInactive{0x201305A};
    static constexpr SV::ResId AgentInvalid{0x201305B};

    // Run panel
    static constexpr SV::ResId RunTitle{0x2013060};
    static constexpr SV::ResId AnalysisLabel{0x2013061};
    static constexpr SV::ResId AnalysisPath{0x2013062};
    static constexpr SV::ResId AnalysisCapacity{0x2013063};
    static constexpr SV::ResId AnalysisStatic{0x2013064};
    static constexpr SV::ResId AnalysisNonStatic{0x2013065};
    static constexpr SV::ResId AnswersPath{0x2013066};
    static constexpr SV::ResId AnswersCapacity{0x2013067};
    static constexpr SV::ResId AnswersStatic{0x2013068};
    static constexpr SV::ResId AnswersNonStatic{0x2013069};
    static constexpr SV::ResId ModelsLabel{0x201306A};
    static constexpr SV::ResId EnvironmentLabel{0x201306B};
    static constexpr SV::ResId NoEnvironment{0x201306C};
    static constexpr SV::ResId EndLabel{0x201306D};
    static constexpr SV::ResId EndInstances{0x201306E};
    static constexpr SV::ResId EndDays{0x201306F};
    static constexpr SV::ResId StartLabel{0x2013070};
    static constexpr SV::ResId SeedLabel{0x2013071};
    static constexpr SV::ResId DaysLabel{0x2013072};
    static constexpr SV::ResId HoursLabel{0x2013073};
    static constexpr SV::ResId SeedTip{0x2013074};
    static constexpr SV::ResId StartTip{0x2013075};
    static constexpr SV::ResId NeedsModel{0x2013076};
    static constexpr SV::ResId NeedsResults{0x2013077};
    static constexpr SV::ResId BaseTip{0x2013078};

    // Run
    static constexpr SV::ResId MessagesTitle{0x2013080};
    static constexpr SV::ResId Progress{0x2013081};
    static constexpr SV::ResId ProgressLeft{0x2013082};
    static constexpr SV::ResId RunDone{0x2013083};
    static constexpr SV::ResId RunCancelled{0x2013084};
    static constexpr SV::ResId NotSimulated{0x2013085};
    static constexpr SV::ResId AgentsNotStarted{0x2013086};
    static constexpr SV::ResId NothingMeasured{0x2013087};
    static constexpr SV::ResId RunContext{0x2013088};
};

}  // namespace mero
