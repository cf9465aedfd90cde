#pragma once

#include "component/host/sv_string.h"

/// Identifiers of the forms of windows and dialogs, and of the controls on them. The resource module numbers
/// the controls of most forms anew, so each form has names of its own.

/// Which results of a run are shown, and how.
namespace MeroSelectResultForm {
inline constexpr SV::ResId Form{0x2004F74};
inline constexpr SV::ResId Tree{0x2000001};
inline constexpr SV::ResId ResultFrame{0x2000002};
inline constexpr SV::ResId DisplayFrame{0x2000003};
inline constexpr SV::ResId TotalRadio{0x2000004};
inline constexpr SV::ResId ValuesRadio{0x2000005};
inline constexpr SV::ResId HistoryRadio{0x2000006};
inline constexpr SV::ResId DetailRadio{0x2000007};
inline constexpr SV::ResId GraphRadio{0x2000008};
inline constexpr SV::ResId ScaleFrame{0x2000009};
inline constexpr SV::ResId ScaleLabel{0x200000A};
inline constexpr SV::ResId UnscaledRadio{0x200000B};
inline constexpr SV::ResId ScaledRadio{0x200000C};
inline constexpr SV::ResId ScopeButton{0x200000D};
inline constexpr SV::ResId FrequencyFrame{0x200000E};
inline constexpr SV::ResId FrequencyField{0x200000F};
inline constexpr SV::ResId FrequencyLabel{0x2000010};
inline constexpr SV::ResId PeriodButton{0x2000011};
inline constexpr SV::ResId ShowButton{0x2000012};
inline constexpr SV::ResId CloseButton{0x2000013};
inline constexpr SV::ResId HelpButton{0x2000014};
inline constexpr SV::ResId OptionsFrame{0x2000016};
inline constexpr SV::ResId ExtremesBox{0x2000017};
inline constexpr SV::ResId SumBox{0x2000018};
inline constexpr SV::ResId TreeLabel{0x2000019};
inline constexpr SV::ResId GroupBox{0x200001A};  ///< a check box
inline constexpr SV::ResId ClassLabel{0x200001B};
inline constexpr SV::ResId ClassList{0x200001C};
inline constexpr SV::ResId RelationLabel{0x200001D};
inline constexpr SV::ResId RelationList{0x200001E};
inline constexpr SV::ResId InfoButton{0x200001F};
}  // namespace MeroSelectResultForm

/// Table of results.
namespace MeroBrowserForm {
inline constexpr SV::ResId Form{0x2004F42};
inline constexpr SV::ResId Icon{0x2004F48};
inline constexpr SV::ResId Browser{0x2000001};
inline constexpr SV::ResId SaveButton{0x2000002};
inline constexpr SV::ResId PrintButton{0x2000003};
inline constexpr SV::ResId SearchButton{0x2000004};
inline constexpr SV::ResId DiagramButton{0x2000005};
inline constexpr SV::ResId CloseButton{0x2000006};
inline constexpr SV::ResId HelpButton{0x2000007};
inline constexpr SV::ResId SizingGrip{0x2000008};
}  // namespace MeroBrowserForm

/// Curves of a history.
namespace MeroGraphResultForm {
inline constexpr SV::ResId Form{0x2004EA2};
inline constexpr SV::ResId Hint{0x2004EA3};
inline constexpr SV::ResId LegendLabel{0x2005002};
inline constexpr SV::ResId Graph{0x2000001};
inline constexpr SV::ResId Legend{0x2000002};
inline constexpr SV::ResId CloseButton{0x2000003};
inline constexpr SV::ResId HelpButton{0x2000004};
inline constexpr SV::ResId SizingGrip{0x2000005};
}  // namespace MeroGraphResultForm

/// Curves of a run as it goes on; with the controls of `MeroGraphResultForm`, but for the hint.
namespace MeroAnimationForm {
inline constexpr SV::ResId Form{0x2004FF9};
inline constexpr SV::ResId FollowBox{0x2004FF8};
inline constexpr SV::ResId CountLabel{0x2004FFA};
inline constexpr SV::ResId Count{0x2004FFB};
inline constexpr SV::ResId ValueLabel{0x2004FFC};
inline constexpr SV::ResId Value{0x2004FFD};
}  // namespace MeroAnimationForm

/// Rows and columns of a table for a chart.
namespace MeroDiagramStartForm {
inline constexpr SV::ResId Form{0x2004F56};
inline constexpr SV::ResId ColumnList{0x2000001};
inline constexpr SV::ResId RowList{0x2000002};
inline constexpr SV::ResId RowsAsMainRadio{0x2000003};
inline constexpr SV::ResId ColumnsAsMainRadio{0x2000004};
inline constexpr SV::ResId SingleRadio{0x2000005};
inline constexpr SV::ResId SeveralRadio{0x2000006};
inline constexpr SV::ResId OkButton{0x2000007};
inline constexpr SV::ResId CancelButton{0x2000008};
inline constexpr SV::ResId HelpButton{0x2000009};
inline constexpr SV::ResId MainFrame{0x200000A};
inline constexpr SV::ResId ColumnLabel{0x200000B};
inline constexpr SV::ResId RowLabel{0x200000C};
inline constexpr SV::ResId KindFrame{0x200000D};
}  // namespace MeroDiagramStartForm

/// Bar chart.
namespace MeroGraphForm {
inline constexpr SV::ResId Form{0x2004F61};
inline constexpr SV::ResId Diagram{0x2000001};
inline constexpr SV::ResId CloseButton{0x2000002};
inline constexpr SV::ResId HelpButton{0x2000003};
}  // namespace MeroGraphForm

/// Period that values are scaled to.
namespace MeroTimeScopeForm {
inline constexpr SV::ResId Form{0x2004F9C};
inline constexpr SV::ResId Frame{0x2000001};
inline constexpr SV::ResId YearRadio{0x2000002};
inline constexpr SV::ResId QuarterRadio{0x2000003};
inline constexpr SV::ResId MonthRadio{0x2000004};
inline constexpr SV::ResId DayRadio{0x2000005};
inline constexpr SV::ResId UserRadio{0x2000006};
inline constexpr SV::ResId PeriodLabel{0x2000007};
inline constexpr SV::ResId PeriodEdit{0x2000008};
inline constexpr SV::ResId NameLabel{0x2000009};
inline constexpr SV::ResId NameEdit{0x200000A};
inline constexpr SV::ResId OkButton{0x200000B};
inline constexpr SV::ResId CancelButton{0x200000C};
inline constexpr SV::ResId HelpButton{0x200000D};
inline constexpr SV::ResId CalendarBox{0x200000E};
inline constexpr SV::ResId TimeToolBox{0x200000F};
inline constexpr SV::ResId TimeButtonImage{0x2004FA7};
}  // namespace MeroTimeScopeForm

/// Agents of models.
namespace MeroAgentsInModelsForm {
inline constexpr SV::ResId Form{0x2005032};
inline constexpr SV::ResId TreeLabel{0x2000001};
inline constexpr SV::ResId Tree{0x2000002};
inline constexpr SV::ResId DeleteButton{0x2000003};
inline constexpr SV::ResId ConfigureButton{0x2000004};
inline constexpr SV::ResId ActivationButton{0x2000005};
inline constexpr SV::ResId TreeFrame{0x2000006};
inline constexpr SV::ResId InfoLabel{0x2000007};
inline constexpr SV::ResId InfoEdit{0x2000008};
inline constexpr SV::ResId InfoToolBox{0x2000009};
inline constexpr SV::ResId InfoFrame{0x200000B};
inline constexpr SV::ResId TypeLabel{0x200000C};
inline constexpr SV::ResId TypeBox{0x200000D};
inline constexpr SV::ResId NewButton{0x200000E};
inline constexpr SV::ResId TypeFrame{0x200000F};
inline constexpr SV::ResId CloseButton{0x2000010};
inline constexpr SV::ResId HelpButton{0x2000011};
}  // namespace MeroAgentsInModelsForm

/// Class of a new agent.
namespace MeroAgentClassForm {
inline constexpr SV::ResId Form{0x2004F4C};
inline constexpr SV::ResId Label{0x2000001};
inline constexpr SV::ResId ClassList{0x2000002};
inline constexpr SV::ResId OkButton{0x2000003};
inline constexpr SV::ResId CancelButton{0x2000004};
inline constexpr SV::ResId HelpButton{0x2000005};
}  // namespace MeroAgentClassForm

/// Forms of the platform's own dialogs.
namespace MeroViewForm {
inline constexpr SV::ResId Form{0x2010010};
inline constexpr SV::ResId Text{0x2000001};
inline constexpr SV::ResId CloseButton{0x2000002};
}  // namespace MeroViewForm

namespace MeroInputForm {
inline constexpr SV::ResId Form{0x2010020};
inline constexpr SV::ResId Label{0x2000001};
inline constexpr SV::ResId Edit{0x2000002};
inline constexpr SV::ResId OkButton{0x2000003};
inline constexpr SV::ResId CancelButton{0x2000004};
}  // namespace MeroInputForm

namespace MeroEditTimeForm {
inline constexpr SV::ResId Form{0x2010030};
inline constexpr SV::ResId YearsLabel{0x2000001};
inline constexpr SV::ResId Years{0x2000002};
inline constexpr SV::ResId DaysLabel{0x2000003};
inline constexpr SV::ResId Days{0x2000004};
inline constexpr SV::ResId HoursLabel{0x2000005};
inline constexpr SV::ResId Hours{0x2000006};
inline constexpr SV::ResId MinutesLabel{0x2000007};
inline constexpr SV::ResId Minutes{0x2000008};
inline constexpr SV::ResId SecondsLabel{0x2000009};
inline constexpr SV::ResId Seconds{0x200000A};
inline constexpr SV::ResId OkButton{0x200000B};
inline constexpr SV::ResId CancelButton{0x200000C};
}  // namespace MeroEditTimeForm

namespace MeroMessageForm {
inline constexpr SV::ResId Form{0x2010040};
inline constexpr SV::ResId Text{0x2000001};
}  // namespace MeroMessageForm

/// The edit of a day stands behind its label; the next day behind both.
namespace MeroCalendarForm {
inline constexpr SV::ResId Form{0x2010050};
inline constexpr SV::ResId FirstDayLabel{0x2000001};
inline constexpr SV::ResId FirstDayEdit{0x2000002};
inline constexpr SV::ResId SpecialLabel{0x200000F};
inline constexpr SV::ResId Special{0x2000010};
inline constexpr SV::ResId OkButton{0x2000011};
inline constexpr SV::ResId CancelButton{0x2000012};
inline constexpr SV::ResId Hint{0x2000013};
}  // namespace MeroCalendarForm
