#include "apps/workbench/run_panel.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <set>

#include "apps/workbench/texts.h"
#include "apps/workbench/workbench_messages.h"

namespace mero {

namespace {

struct AnalysisChoice {
    Analysis analysis;
    SV::ResId name;
    SV::ResId answers;
};
constexpr std::array Analyses{
    AnalysisChoice{Analysis::Path, WorkbenchText::AnalysisPath, WorkbenchText::AnswersPath},
    AnalysisChoice{Analysis::Capacity, WorkbenchText::AnalysisCapacity, WorkbenchText::AnswersCapacity},
    AnalysisChoice{Analysis::StaticWorkLoad, WorkbenchText::AnalysisStatic, WorkbenchText::AnswersStatic},
    AnalysisChoice{Analysis::NonStaticWorkLoad, WorkbenchText::AnalysisNonStatic,
                   WorkbenchText::AnswersNonStatic},
};

enum EndUnit : int { EndByInstances = 0, EndByDays = 1 };

constexpr int Gap = 8;
constexpr int WideGap = 12;

/// The layout owns what is added to it; the widget is the caller's to use.
template <class Widget>
Widget* addRow(QFormLayout& form, SV::ResId text, Widget* widget) {
    auto made = std::make_unique<QLabel>(label(text));
    made->setBuddy(widget);
    widget->setAccessibleName(say(text));
    form.addRow(made.release(), widget);
    return widget;
}

QFormLayout* formIn(QWidget& widget) {
    auto form = std::make_unique<QFormLayout>();
    form->setSpacing(Gap);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    widget.setLayout(form.get());
    return form.release();
}

template <class Widget>
Widget* make() {
    return std::make_unique<Widget>().release();
}

}  // namespace

RunPanel::RunPanel(QWidget* parent) : QWidget(parent) {
    settings = make<QWidget>();
    auto* const inner = make<QVBoxLayout>();
    inner->setContentsMargins({});
    inner->setSpacing(WideGap);
    inner->addWidget(makeTask());
    inner->addWidget(makeConditions());
    settings->setLayout(inner);
    auto* const outer = make<QVBoxLayout>();
    outer->setContentsMargins(WideGap, WideGap, WideGap, WideGap);
    outer->setSpacing(WideGap);
    outer->addWidget(settings);
    outer->addStretch();
    outer->addWidget(makeButtons());
    setLayout(outer);
    connectAll();
    updateControls();
}

QWidget* RunPanel::makeTask() {
    auto* const group = make<QGroupBox>();
    group->setTitle(say(WorkbenchText::RunTitle));
    QFormLayout& form = *formIn(*group);
    form.setRowWrapPolicy(QFormLayout::WrapAllRows);
    analysis = addRow(form, WorkbenchText::AnalysisLabel, make<QComboBox>());
    for (const AnalysisChoice& choice : Analyses) {
        analysis->addItem(say(choice.name));
    }
    answer = make<QLabel>();
    answer->setWordWrap(true);
    form.addRow(answer);
    models = addRow(form, WorkbenchText::ModelsLabel, make<QListWidget>());
    constexpr int ListHeight = 88;
    models->setFixedHeight(ListHeight);
    environment = addRow(form, WorkbenchText::EnvironmentLabel, make<QComboBox>());
    environment->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    auto* const ending = make<QWidget>();
    auto* const row = make<QHBoxLayout>();
    row->setContentsMargins({});
    row->setSpacing(Gap);
    end = make<QSpinBox>();
    constexpr int MostInstances = 100'000'000;
    end->setRange(1, MostInstances);
    end->setGroupSeparatorShown(true);
    end->setValue(1000);
    endUnit = make<QComboBox>();
    endUnit->addItem(say(WorkbenchText::EndInstances));
    endUnit->addItem(say(WorkbenchText::EndDays));
    endUnit->setAccessibleName(say(WorkbenchText::EndLabel));
    row->addWidget(end, 1);
    row->addWidget(endUnit);
    ending->setLayout(row);
    addRow(form, WorkbenchText::EndLabel, ending)->setFocusProxy(end);
    return group;
}

QWidget* RunPanel::makeConditions() {
    auto* const group = make<QGroupBox>();
    QFormLayout& form = *formIn(*group);
    start = addRow(form, WorkbenchText::StartLabel, make<QDateTimeEdit>());
    start->setDateTime(QDateTime(QDate(QDate::currentDate().year(), 1, 1), QTime(8, 0)));
    start->setCalendarPopup(true);
    seed = addRow(form, WorkbenchText::SeedLabel, make<QSpinBox>());
    seed->setRange(0, 1'000'000'000);
    seed->setValue(1);
    seed->setToolTip(say(WorkbenchText::SeedTip));
    daysPerYear = addRow(form, WorkbenchText::DaysLabel, make<QDoubleSpinBox>());
    daysPerYear->setRange(1, 366);
    daysPerYear->setDecimals(1);
    daysPerYear->setValue(365);
    hoursPerDay = addRow(form, WorkbenchText::HoursLabel, make<QDoubleSpinBox>());
    hoursPerDay->setRange(0.5, 24);
    hoursPerDay->setDecimals(1);
    hoursPerDay->setValue(24);
    for (QWidget* const box : {daysPerYear, hoursPerDay}) {
        box->setToolTip(say(WorkbenchText::BaseTip));
    }
    return group;
}

QWidget* RunPanel::makeButtons() {
    auto* const part = make<QWidget>();
    auto* const column = make<QVBoxLayout>();
    column->setContentsMargins({});
    column->setSpacing(Gap);
    progressText = make<QLabel>();
    progressText->setWordWrap(true);
    progress = make<QProgressBar>();
    constexpr int Thousandths = 1000;
    progress->setRange(0, Thousandths);
    progress->setTextVisible(false);
    auto* const row = make<QHBoxLayout>();
    row->setSpacing(Gap);
    results = make<QPushButton>();
    results->setText(label(WorkbenchText::Results));
    cancel = make<QPushButton>();
    cancel->setText(label(WorkbenchText::Cancel));
    simulate = make<QPushButton>();
    simulate->setText(label(WorkbenchText::Simulate));
    simulate->setDefault(true);
    row->addWidget(results);
    row->addStretch();
    row->addWidget(cancel);
    row->addWidget(simulate);
    column->addWidget(progressText);
    column->addWidget(progress);
    column->addLayout(row);
    part->setLayout(column);
    return part;
}

void RunPanel::connectAll() {
    const auto call = [](const std::function<void()>& handler) {
        if (handler) {
            handler();
        }
    };
    connect(simulate, &QPushButton::clicked, this, [this, call] { call(simulateHandler); });
    connect(cancel, &QPushButton::clicked, this, [this, call] { call(cancelHandler); });
    connect(results, &QPushButton::clicked, this, [this, call] { call(resultsHandler); });
    connect(analysis, &QComboBox::currentIndexChanged, this, [this] { updateControls(); });
    connect(models, &QListWidget::itemChanged, this, [this] { updateControls(); });
}

Analysis RunPanel::chosenAnalysis() const {
    return Analyses.at(static_cast<std::size_t>(std::max(analysis->currentIndex(), 0))).analysis;
}

QString RunPanel::analysisName() const {
    return analysis->currentText();
}

void RunPanel::updateControls() {
    const std::size_t index = static_cast<std::size_t>(std::max(analysis->currentIndex(), 0));
    answer->setText(say(Analyses.at(index).answers));
    const bool hasCalendar = isWorkLoad(chosenAnalysis());
    start->setEnabled(hasCalendar);
    start->setToolTip(hasCalendar ? QString() : say(WorkbenchText::StartTip));
    settings->setEnabled(!running);
    simulate->setEnabled(!running && isReady());
    simulate->setToolTip(isReady() ? QString() : say(WorkbenchText::NeedsModel));
    results->setEnabled(!running && hasResults);
    results->setToolTip(hasResults ? QString() : say(WorkbenchText::NeedsResults));
    cancel->setVisible(running);
    progress->setVisible(running);
    progressText->setVisible(running);
}

bool RunPanel::isReady() const {
    return !request().models.empty();
}

void RunPanel::setModels(const std::vector<Workspace::ModelEntry>& entries) {
    const RunRequest before = request();
    const std::set<MeroId> checked(before.models.begin(), before.models.end());
    const QSignalBlocker blocker(models);
    models->clear();
    environment->clear();
    environment->addItem(say(WorkbenchText::NoEnvironment), MeroNoId);
    bool isChecked = false;
    for (const Workspace::ModelEntry& entry : entries) {
        const QString name = QString::fromStdString(entry.name);
        if (!entry.isProcess) {
            environment->addItem(name, entry.id);
            continue;
        }
        auto item = std::make_unique<QListWidgetItem>(name);
        item->setData(Qt::UserRole, entry.id);
        item->setToolTip(name);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(checked.contains(entry.id) ? Qt::Checked : Qt::Unchecked);
        isChecked = isChecked || checked.contains(entry.id);
        models->addItem(item.release());
    }
    if (!isChecked && models->count() > 0) {
        models->item(0)->setCheckState(Qt::Checked);
    }
    const int place = environment->findData(before.environment);
    // The last working environment is that of the last import.
    environment->setCurrentIndex(before.environment != MeroNoId && place > 0 ? place
                                                                             : environment->count() - 1);
    updateControls();
}

std::uint64_t RunPanel::wantedInstances() const {
    return endUnit->currentIndex() == EndByInstances
               ? static_cast<std::uint64_t>(end->value()) * request().models.size()
               : 0;
}

RunRequest RunPanel::request() const {
    RunRequest request;
    request.analysis = chosenAnalysis();
    for (int row = 0; row < models->count(); ++row) {
        if (models->item(row)->checkState() == Qt::Checked) {
            request.models.push_back(models->item(row)->data(Qt::UserRole).toInt());
        }
    }
    request.environment = environment->currentData().toInt();
    request.timeBase = {daysPerYear->value(), hoursPerDay->value()};
    request.seed = static_cast<std::uint64_t>(seed->value());
    request.instances = static_cast<std::uint64_t>(end->value());
    if (endUnit->currentIndex() == EndByDays) {
        constexpr std::int64_t SecondsOfADay = 86400;
        request.instances = 0;
        request.until = end->value() * SecondsOfADay;
    }
    if (isWorkLoad(request.analysis)) {
        const QDate date = start->date();
        const QTime time = start->time();
        request.start = SV::DateTime(SV::Date(date.day(), date.month(), date.year()),
                                     SV::Time(time.hour(), time.minute(), time.second()));
    }
    return request;
}

void RunPanel::setRunning(bool isRunning) {
    running = isRunning;
    showProgress(0, {});
    updateControls();
}

void RunPanel::showProgress(double share, const QString& text) {
    progress->setValue(static_cast<int>(std::clamp(share, 0.0, 1.0) * progress->maximum()));
    progressText->setText(text);
}

void RunPanel::setHasResults(bool newHasResults) {
    hasResults = newHasResults;
    updateControls();
}

}  // namespace mero
