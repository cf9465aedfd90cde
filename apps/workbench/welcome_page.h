#pragma once

#include <QWidget>
#include <functional>

#include "component/host/sv_string.h"

class QVBoxLayout;

namespace mero {

/// What a user can begin with, before a repository is open.
class WelcomePage : public QWidget {
public:
    struct Handlers {
        std::function<void()> openExample;
        std::function<void()> importProcess;
        std::function<void()> importLog;
        std::function<void()> openRepository;
    };

    explicit WelcomePage(Handlers pageHandlers, QWidget* parent = nullptr);

private:
    void addWay(QVBoxLayout& column, SV::ResId title, SV::ResId text, const char* icon,
                const std::function<void()>& handler);

    Handlers handlers;
};

}  // namespace mero
