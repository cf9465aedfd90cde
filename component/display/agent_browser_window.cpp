#include "component/display/agent_browser_window.h"

#include <utility>

#include "component/host/printer.h"
#include "component/host/resource_ids.h"
#include "component/host/sv_datetime.h"

#include "component/display/agent_diagram_start_dialog.h"
#include "component/display/agent_result_windows.h"
#include "component/management/message_text.h"

namespace {

constexpr SV::ResId SaveText{0x2003BC6};
constexpr SV::ResId PrintText{0x2003BC7};
constexpr SV::ResId SearchText{0x2003BC8};
constexpr SV::ResId TableHeader{0x2004F49};
constexpr SV::ResId PageHeader{0x200505B};
constexpr SV::ResId MessageNoPrinter{0x2012006};

constexpr SV::Size MinimumSize{280, 200};
constexpr bool PrinterOrFile = true;

}  // namespace

MeroAgentBrowserWindow::MeroAgentBrowserWindow(SV::Window* parent, MeroAgentResultWindows& owner,
                                               MeroResultView shownView, const SV::String& caption,
                                               std::unique_ptr<MeroAgentBrowserObjects> shownObjects)
    : MeroAgentBasicResultInterface(parent, MeroBrowserForm::Form, std::move(shownView)),
      windows(owner),
      busyOwner(dynamic_cast<MeroBusyOwner*>(parent)),
      objects(std::move(shownObjects)),
      browser(this, MeroBrowserForm::Browser),
      saveButton(this, MeroBrowserForm::SaveButton),
      printButton(this, MeroBrowserForm::PrintButton),
      searchButton(this, MeroBrowserForm::SearchButton),
      diagramButton(this, MeroBrowserForm::DiagramButton),
      closeButton(this, MeroBrowserForm::CloseButton),
      helpButton(this, MeroBrowserForm::HelpButton),
      sizingGrip(this, MeroBrowserForm::SizingGrip) {
    SetText(caption);
    SetIcon(SV::Image(MeroBrowserForm::Icon));
    saveButton.SetText(SV::String(SaveText));
    printButton.SetText(SV::String(PrintText));
    searchButton.SetText(SV::String(SearchText));
    if (Mero_GetPrinter(PrinterOrFile) == nullptr) {
        printButton.Disable();
        printButton.SetToolTip(SV::String(MessageNoPrinter));
    }
    browser.SetMode(BrowserModeResults);
    setHeaders(caption);
    browser.SetObjects(objects.get());
    objects->shrinkAll();
    setHandlers();
    SetMinOutputSizePixel(MinimumSize);
}

MeroAgentBrowserWindow::~MeroAgentBrowserWindow() = default;

void MeroAgentBrowserWindow::setHeaders(const SV::String& caption) {
    const SV::String date = SV::International::GetDate(SV::Date::Today(), true);
    const SV::String time = SV::International::GetTime(SV::Time::Now(), true, false);
    SV::String tableHeader(TableHeader);
    tableHeader.Replace("%s", time, tableHeader.Replace("%s", date));
    objects->addHeader(caption + tableHeader);
    objects->setSecondHeader(fillMessage(PageHeader, {{"%s", caption}, {"%d", date}, {"%t", time}}));
}

void MeroAgentBrowserWindow::setHandlers() {
    const auto bindWork = [this](SV::PushButton& button, auto work) {
        button.SetClickHdl([this, work] {
            const MeroBusyScope busy(*this);
            work();
        });
    };
    bindWork(saveButton, [this] { objects->saveIt(this); });
    bindWork(printButton, [this] { objects->printContent(this); });
    bindWork(searchButton, [this] { objects->search(this); });
    bindWork(diagramButton, [this] { openDiagramDialog(); });
    browser.SetBusyHdl([this](bool begins) { begins ? enterBusy() : leaveBusy(); });
}

void MeroAgentBrowserWindow::openDiagramDialog() {
    bool isUsable = true;
    MeroAgentDiagramStartDialog dialog(this, *objects, isUsable);
    if (isUsable) {
        dialog.Execute();
    }
}

void MeroAgentBrowserWindow::enterBusy() {
    ++busyCount;
    closeButton.Disable();
    if (busyOwner != nullptr) {
        busyOwner->enterBusy();
    }
}

void MeroAgentBrowserWindow::leaveBusy() {
    --busyCount;
    closeButton.Enable(busyCount == 0);
    if (busyOwner != nullptr) {
        busyOwner->leaveBusy();
    }
}

bool MeroAgentBrowserWindow::Close() {
    if (busyCount > 0) {
        return false;
    }
    const auto self = windows.forgetBrowserWindow(*this);
    Hide();
    return true;
}
