#include <QHBoxLayout>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "component/host/extension_controls.h"
#include "component/host/tab_control.h"

#include "platform/toolkit/qt/control_peer.h"
#include "platform/toolkit/qt/icons.h"
#include "platform/toolkit/qt/text_conversion.h"
#include "platform/toolkit/qt/window_peer.h"

namespace mero::qt {

namespace {

class TabPeer : public ControlPeer {
public:
    TabPeer(MeroTabControl& shownTabs, QTabWidget* shown)
        : ControlPeer(shownTabs, shown), tabs(shownTabs), view(shown) {
        while (view->count() > 0) {
            view->removeTab(0);
        }
        connect(view, &QTabWidget::currentChanged, this, [this](int index) {
            const std::vector<MeroId> pages = tabs.GetPages();
            if (!isUpdating() && index >= 0 && static_cast<std::size_t>(index) < pages.size()) {
                tabs.userActivate(pages[static_cast<std::size_t>(index)]);
            }
        });
    }

protected:
    void update(const SV::Change& change) override {
        switch (change.aspect) {
            case SV::Aspect::ItemsInserted: {
                auto page = std::make_unique<QWidget>();
                auto layout = std::make_unique<QVBoxLayout>();
                layout->setContentsMargins({});
                page->setLayout(layout.release());
                view->insertTab(change.position, page.release(), withMnemonic(tabs.GetPageText(change.item)));
                break;
            }
            case SV::Aspect::ItemsRemoved:
                removePage(change.position);
                break;
            case SV::Aspect::ItemChanged:
                insertElement(change);
                break;
            case SV::Aspect::PageText:
                view->setTabText(change.position, withMnemonic(tabs.GetPageText(change.item)));
                break;
            default:
                break;
        }
        const std::vector<MeroId> pages = tabs.GetPages();
        const auto current = std::find(pages.begin(), pages.end(), tabs.GetCurPageId());
        view->setCurrentIndex(current != pages.end() ? static_cast<int>(current - pages.begin()) : -1);
    }

private:
    void removePage(int position) {
        const std::unique_ptr<QWidget> page(view->widget(position));
        view->removeTab(position);
        // The forms belong to their windows.
        for (QObject* child : page->children()) {
            if (auto* form = qobject_cast<QWidget*>(child)) {
                form->hide();
                form->setParent(nullptr);
            }
        }
    }

    void insertElement(const SV::Change& change) {
        const std::vector<MeroId> pages = tabs.GetPages();
        const auto place = std::find(pages.begin(), pages.end(), change.item);
        QWidget* page = view->widget(static_cast<int>(place - pages.begin()));
        const SV::Control& element =
            *tabs.GetElements(change.item)[static_cast<std::size_t>(change.position)];
        const SV::Window* window = formWindowOf(element);
        auto* form = window != nullptr ? dynamic_cast<WindowPeer*>(window->GetPeer()) : nullptr;
        if (form == nullptr || form->getWidget() == nullptr || form->getWidget()->parentWidget() == page) {
            return;
        }
        form->embed();
        form->getWidget()->setParent(page, Qt::Widget);
        page->layout()->addWidget(form->getWidget());
        form->getWidget()->show();
    }

    MeroTabControl& tabs;
    QTabWidget* view;
};

class ToolBoxPeer : public ControlPeer {
public:
    ToolBoxPeer(MeroToolBox& shownBox, QWidget* place) : ControlPeer(shownBox, place), box(shownBox) {
        auto layout = std::make_unique<QHBoxLayout>();
        layout->setContentsMargins({});
        layout->setSpacing(0);
        place->setLayout(layout.release());
    }

protected:
    void update(const SV::Change& change) override {
        const auto position = static_cast<std::size_t>(change.position);
        if (change.aspect == SV::Aspect::ItemsInserted) {
            const MeroToolBox::Item& item = box.GetItems()[position];
            auto button = std::make_unique<QToolButton>();
            button->setIcon(iconOf(item.image));
            button->setAutoRaise(true);
            button->setToolTip(plain(item.helpText));
            button->setAccessibleName(plain(item.helpText));
            button->setFocusPolicy(Qt::TabFocus);
            connect(button.get(), &QToolButton::clicked, this, [this, id = item.id] { box.userPress(id); });
            buttons.push_back(button.get());
            widget->layout()->addWidget(button.release());
        } else if (change.aspect == SV::Aspect::ItemChanged) {
            buttons[position]->setEnabled(box.GetItems()[position].enabled);
        }
    }

private:
    MeroToolBox& box;
    std::vector<QToolButton*> buttons;
};

}  // namespace

std::unique_ptr<SV::Peer> makeTabPeer(SV::Control& control, QWidget* widget) {
    return std::make_unique<TabPeer>(static_cast<MeroTabControl&>(control),
                                     qobject_cast<QTabWidget*>(widget));
}

std::unique_ptr<SV::Peer> makeToolBoxPeer(SV::Control& control, QWidget* widget) {
    return std::make_unique<ToolBoxPeer>(static_cast<MeroToolBox&>(control), widget);
}

}  // namespace mero::qt
