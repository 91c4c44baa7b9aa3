#pragma once

#include "help/window/OkWindow.h"

#include <memory>

namespace quillbay {

namespace Ui {
class frmAbout;
}

class EffectHost;

/// The program's name, version and purpose.
class frmAbout : public OkWindow {
    Q_OBJECT

public:
    frmAbout(EffectHost& main, QAction* menuItem);
    ~frmAbout() override;

protected:
    void Form_Load() override;

private:
    std::unique_ptr<Ui::frmAbout> ui_;
};

} // namespace quillbay
