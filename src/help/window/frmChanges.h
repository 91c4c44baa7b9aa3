#pragma once

#include "help/window/OkWindow.h"

#include <memory>

namespace quillbay {

namespace Ui {
class frmChanges;
}

class EffectHost;

/// What has changed since the last release.
class frmChanges : public OkWindow {
    Q_OBJECT

public:
    frmChanges(EffectHost& main, QAction* menuItem);
    ~frmChanges() override;

private:
    std::unique_ptr<Ui::frmChanges> ui_;
};

} // namespace quillbay
