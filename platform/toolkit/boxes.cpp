#include "component/host/resource_ids.h"
#include "component/host/sv_boxes.h"

namespace SV {

BoxDesk& BoxDesk::GetGlobal() {
    static BoxDesk desk;
    return desk;
}

int BoxDesk::execute(BoxKind kind, Window* parent, int style, const String& text) {
    // A box stands in the record before the boxes that its responder opens.
    const std::size_t index = records.size();
    records.push_back({kind, text.GetMessage(), text, BoxCancelled});
    const int answer = responder ? responder(kind, parent, style, text)
                                 : Toolkit::GetGlobal().runBox(kind, parent, style, text);
    if (index < records.size()) {
        records[index].answer = answer;
    }
    return answer;
}

int MessBox::Execute() {
    return BoxDesk::GetGlobal().execute(kind, parentWindow, styleValue, message);
}

}  // namespace SV

MeroMessWin::MeroMessWin(SV::Window* parent, const SV::String& text)
    : SV::Window(parent, MeroMessageForm::Form), label(this, MeroMessageForm::Text) {
    SetText(text);
}

void MeroMessWin::SetText(const SV::String& text) {
    SV::Window::SetText(text);
    label.SetText(text);
}
