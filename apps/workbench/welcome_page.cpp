#include "apps/workbench/welcome_page.h"

#include <QCommandLinkButton>
#include <QLabel>
#include <QVBoxLayout>
#include <memory>

#include "apps/workbench/texts.h"
#include "apps/workbench/workbench_messages.h"
#include "platform/toolkit/qt/icons.h"

namespace mero {

WelcomePage::WelcomePage(Handlers pageHandlers, QWidget* parent)
    : QWidget(parent), handlers(std::move(pageHandlers)) {
    constexpr int ColumnWidth = 560;
    constexpr int TitleGrowth = 8;
    auto middle = std::make_unique<QWidget>();
    middle->setFixedWidth(ColumnWidth);
    auto column = std::make_unique<QVBoxLayout>();
    column->setSpacing(12);
    auto title = std::make_unique<QLabel>(say(WorkbenchText::WelcomeTitle));
    QFont large = font();
    large.setPointSize(large.pointSize() + TitleGrowth);
    title->setFont(large);
    auto text = std::make_unique<QLabel>(say(WorkbenchText::WelcomeText));
    text->setWordWrap(true);
    column->addWidget(title.release());
    column->addWidget(text.release());
    addWay(*column, WorkbenchText::OpenExample, WorkbenchText::OpenExampleText, "chart",
           handlers.openExample);
    addWay(*column, WorkbenchText::ImportProcess, WorkbenchText::ImportProcessText, "process",
           handlers.importProcess);
    addWay(*column, WorkbenchText::ImportLog, WorkbenchText::ImportLogText, "clock", handlers.importLog);
    addWay(*column, WorkbenchText::Open, WorkbenchText::OpenRepositoryText, "table", handlers.openRepository);
    middle->setLayout(column.release());
    auto outer = std::make_unique<QVBoxLayout>();
    outer->addWidget(middle.release(), 0, Qt::AlignCenter);
    setLayout(outer.release());
}

void WelcomePage::addWay(QVBoxLayout& column, SV::ResId title, SV::ResId text, const char* icon,
                         const std::function<void()>& handler) {
    QString name = say(title);
    name.remove("...");
    auto button = std::make_unique<QCommandLinkButton>(name, say(text));
    button->setIcon(qt::namedIcon(icon));
    // The style's hint forgets the second line of a long description.
    button->setMinimumHeight(button->fontMetrics().height() * 4);
    connect(button.get(), &QCommandLinkButton::clicked, this, handler);
    column.addWidget(button.release());
}

}  // namespace mero
