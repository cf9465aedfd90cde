#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <filesystem>
#include <gtest/gtest.h>

#include "component/host/function_graph.h"
#include "component/host/graph_window.h"
#include "component/host/host_dialogs.h"
#include "component/host/resource_ids.h"
#include "component/host/sv_boxes.h"
#include "component/host/sv_timer.h"

#include "platform/toolkit/forms.h"
#include "platform/toolkit/qt/field_dress.h"
#include "platform/toolkit/qt/icons.h"
#include "platform/toolkit/qt/palette.h"
#include "platform/toolkit/qt/qt_toolkit.h"
#include "platform/toolkit/qt/text_conversion.h"
#include "tests/platform/toolkit/qt/widget_driver.h"

namespace mero::test {

namespace {

/// Shows each form of the program by a bare window.
TEST(QtWindowsTest, WidgetsOfEveryFormAreThereAndNotClipped) {
    for (const FormSource& source : formSources()) {
        const Result<Form> form = readForm(source.name, source.document);
        SV::Window window(nullptr, form.value().id);
        window.Show();
        const QWidget* root = widgetFor(window);
        ASSERT_NE(root, nullptr) << source.name;
        EXPECT_GE(root->width(), root->minimumSizeHint().width()) << source.name;
        EXPECT_GE(root->height(), root->minimumSizeHint().height()) << source.name;
        for (const FormControl& control : form.value().controls) {
            const auto* widget = root->findChild<QWidget*>(QString::fromStdString(control.name));
            ASSERT_NE(widget, nullptr) << source.name << " " << control.name;
            if (const auto* button = qobject_cast<const QPushButton*>(widget)) {
                EXPECT_GE(button->width(), button->minimumSizeHint().width()) << control.name;
            }
        }
    }
}

TEST(QtWindowsTest, BoxesAskByVerbsAndEscapeIsNo) {
    const auto answerOf = [](SV::BoxKind kind, int style, int button, bool escape) {
        QTimer::singleShot(0, [=] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (escape) {
                QTest::keyClick(box, Qt::Key_Escape);
            } else {
                QTest::mouseClick(box->buttons().at(button), Qt::LeftButton);
            }
        });
        return SV::Toolkit::GetGlobal().runBox(kind, nullptr, style, "Text");
    };
    EXPECT_EQ(answerOf(SV::BoxKind::Query, SV::BoxStyleQuery, 0, true), SV::BoxNo);
    EXPECT_EQ(answerOf(SV::BoxKind::Query, 32, 0, true), SV::BoxCancelled);
    EXPECT_EQ(answerOf(SV::BoxKind::Info, 0, 0, false), SV::BoxOk);
}

TEST(QtWindowsTest, FieldsAreDressedForTheScreen) {
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    const auto shown = [](const char* field, int decimals) {
        return qt::dressed(field, decimals).replace(QChar(QChar::Nbsp), ' ').toStdString();
    };
    EXPECT_EQ(shown("1234567.5", 2), "1,234,567.50");
    EXPECT_EQ(shown("00:002:03:20:00", 0), "2 d 3 h 20 min");
    EXPECT_EQ(shown("00:000:00:00:00", 0), "0 s");
    EXPECT_EQ(shown("-", 0), "-");
    EXPECT_EQ(shown("1. Order", 0), "1. Order");
}

TEST(QtWindowsTest, IconsFollowThePaletteAndUnknownOnesAreDrawn) {
    const QImage known = qt::iconOf(SV::Image(SV::ResId(0x2005043))).pixmap(24).toImage();
    const QImage unknown = qt::iconOf(SV::Image("no such picture")).pixmap(24).toImage();
    EXPECT_NE(known, unknown);
    EXPECT_TRUE(qt::iconOf(SV::Image()).isNull());
    qt::applyLook(*qobject_cast<QApplication*>(QApplication::instance()), true);
    EXPECT_NE(qt::iconOf(SV::Image(SV::ResId(0x2005043))).pixmap(24).toImage(), known);
    qt::applyLook(*qobject_cast<QApplication*>(QApplication::instance()), false);
}

TEST(QtWindowsTest, TablesPrintToPdf) {
    MeroShrinkExpandBrowserObjects objects;
    objects.addColumn("Frequency", 80, 1, 2);
    objects.addRow(-1, 1, {"1. Order", "10"});
    const QTemporaryDir folder;
    const SV::String path = qt::fromQt(folder.filePath("table.pdf"));
    EXPECT_TRUE(qt::printToPdf(path, "Table", objects.getTableText(MeroTableFormat::Html)));
    QFile file(qt::plain(path));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().startsWith("%PDF"));
}

TEST(QtWindowsTest, ACurveIsDrawnWhenItsPointsHaveCome) {
    SV::Window window(nullptr, MeroGraphResultForm::Form);
    MeroFunctionGraph graph(&window, MeroGraphResultForm::Graph);
    graph.InsertGraph(1, 1, "Frequency", SV::Color());
    window.Show();
    const QImage empty = widgetFor(graph)->grab().toImage();
    graph.ShowGraph(1, 1, 3, 2);
    for (int each = 0; each < 1000; ++each) {
        graph.InsertValue(1, {static_cast<double>(each), static_cast<double>(each % 7)});
    }
    QTest::qWait(100);
    const QImage drawn = widgetFor(graph)->grab().toImage();
    EXPECT_NE(drawn, empty);
}

TEST(QtWindowsTest, TimersCallTheirHandlerOnce) {
    SV::Timer timer;
    int calls = 0;
    timer.SetTimeout(1);
    timer.SetTimeoutHdl([&] {
        if (++calls < 3) {
            timer.Start();
        }
    });
    timer.Start();
    QTest::qWait(100);
    EXPECT_EQ(calls, 3);
    EXPECT_FALSE(timer.IsActive());
}

TEST(QtWindowsTest, AWindowMayDeleteItselfWhenItCloses) {
    struct SelfDeleting : SV::ModelessDialog {
        explicit SelfDeleting(bool& goneFlag)
            : SV::ModelessDialog(nullptr, MeroViewForm::Form), gone(goneFlag) {}
        ~SelfDeleting() override { gone = true; }
        bool Close() override {
            Hide();
            const std::unique_ptr<SelfDeleting> self(this);
            return true;
        }
        bool& gone;
        MeroCloseButton closeButton{this, MeroViewForm::CloseButton};
    };
    for (const bool byButton : {false, true}) {
        bool gone = false;
        auto* window = std::make_unique<SelfDeleting>(gone).release();
        WidgetDriver user;
        user.show(*window);
        if (byButton) {
            user.click(window->closeButton);
        } else {
            user.close(*window);
        }
        EXPECT_TRUE(gone);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

}  // namespace

}  // namespace mero::test
