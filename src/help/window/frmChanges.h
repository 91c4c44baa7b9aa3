#pragma once

#include "help/window/OkWindow.h"

#include <memory>

namespace quillbay {

namespace Ui {
class frmChanges;
}

class frmSelector;

/// What has changed since the last release.
class frmChanges : public OkWindow {
    Q_OBJECT

public:
    frmChanges(frmSelector& main, QAction* menuItem);
    ~frmChanges() override;

private:
    std::unique_ptr<Ui::frmChanges> ui_;
};

} // namespace quillbay
