#pragma once

#include "effects/EffectHost.h"

#include <QWidget>

namespace quillbay::test {

/// A main window for tests of the others.
class TestHost : public EffectHost {
public:
    TestHost() {
        main.resize(400, 300);
        main.show();
    }
    ClosingSwitches SmoothClosing() const override { return switches; }
    bool SmoothCloseMainWindowOnly() const override { return mainWindowOnly; }
    QWidget& MainWindow() override { return main; }

    QWidget main;
    ClosingSwitches switches;
    bool mainWindowOnly = true;
};

} // namespace quillbay::test
