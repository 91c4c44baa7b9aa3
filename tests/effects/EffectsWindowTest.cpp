#include "effects/EffectWindow.h"
#include "effects/WindowEffects.h"
#include "support/AnswerBoxesWindow.h"
#include "support/FakeLayeredWindow.h"
#include "support/TestHost.h"

#include <QAction>
#include <QApplication>
#include <QPushButton>
#include <QResizeEvent>
#include <QVBoxLayout>

#include <gtest/gtest.h>
#include <memory>

namespace quillbay {
namespace {

using test::LayeredWindows;
using test::WaitFor;

/// A window that writes down what happens to it.
class Window : public EffectWindow {
public:
    Window(EffectHost& host, QAction* item) : EffectWindow(host, item) {
        setWindowTitle("Probe");
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(new QPushButton("Button", this));
    }
    void Form_Load() override {
        if (++loads == 1) resize(400, 300);
    }
    void Form_Shown() override { ++shown; }
    void resizeEvent(QResizeEvent* event) override {
        if (!isVisible()) return;
        sizes.push_back(event->size());
        closingCaption = closingCaption || windowTitle() == "Probe - Closing";
        if (onResize) onResize(sizes.size());
    }

    int loads = 0;
    int shown = 0;
    std::vector<QSize> sizes;
    bool closingCaption = false;
    std::function<void(std::size_t)> onResize;
};

class Effects : public testing::Test {
protected:
    Effects() {
        host.FadeSpeed = 30;
        host.mainWindowOnly = false;
    }
    void Open() {
        window->Open();
        ASSERT_TRUE(window->isVisible());
        window->sizes.clear();
    }
    bool WaitUntilClosed() {
        return WaitFor([&] { return !window || !window->isVisible(); });
    }
    /// In the next yield of the effect that runs.
    template <typename Action>
    static void Soon(Action action) {
        QMetaObject::invokeMethod(qApp, action, Qt::QueuedConnection);
    }

    test::TestHost host;
    QAction item;
    std::unique_ptr<Window> window = std::make_unique<Window>(host, &item);
};

TEST_F(Effects, FadesStepThroughThePrescribedOpacities) {
    LayeredWindows layers;
    Open();
    const std::vector<int> in{1, 1, 31, 61, 91, 121, 151, 181, 211};
    EXPECT_EQ(layers.Take(*window), in);
    EXPECT_TRUE(item.isChecked());
    EXPECT_EQ(window->loads, 1);
    EXPECT_EQ(window->shown, 1);

    window->Open();
    EXPECT_TRUE(layers.Take(*window).empty()) << "an open window is only brought to the front";
    FadeBetween(*window, 237, 216, 7);
    EXPECT_EQ(layers.Take(*window), (std::vector<int>{237, 230, 223, 216}));

    window->close();
    ASSERT_TRUE(WaitUntilClosed());
    EXPECT_EQ(layers.Take(*window), (std::vector<int>{237, 207, 177, 147, 117, 87, 57, 27}));
    EXPECT_TRUE(window->sizes.empty()) << "nothing shrinks where windows can fade";
    EXPECT_FALSE(item.isChecked());
}

TEST_F(Effects, ShrinksWindowsOfFixedSizeTooAndGivesTheirSizeBack) {
    window->setFixedSize(400, 300);
    Open();
    window->close();
    ASSERT_TRUE(WaitUntilClosed());
    ASSERT_FALSE(window->sizes.empty());
    EXPECT_LE(window->sizes.size(), 400u);
    EXPECT_EQ(window->sizes.back(), QSize(1, 1));
    EXPECT_TRUE(std::all_of(window->sizes.begin(), window->sizes.end(), [](QSize size) {
        return size.width() == 400 || size.height() == 1;
    })) << "height first";
    EXPECT_TRUE(window->closingCaption);
    EXPECT_EQ(window->windowTitle(), "Probe");
    EXPECT_EQ(window->size(), QSize(400, 300));
    EXPECT_EQ(window->maximumSize(), QSize(400, 300));
    EXPECT_EQ(window->minimumSize(), QSize(400, 300));
}

TEST_F(Effects, AShrunkWindowOpensAgainAtItsSize) {
    Open();
    window->close();
    ASSERT_TRUE(WaitUntilClosed());
    QApplication::processEvents();
    Open();
    EXPECT_EQ(window->size(), QSize(400, 300));
}

TEST_F(Effects, SwitchesAndTheLayoutsOwnMinimumAreObeyed) {
    host.switches = {false, true, false};
    Open();
    const QSize minimum = window->minimumSize();
    window->close();
    ASSERT_TRUE(WaitUntilClosed());
    EXPECT_EQ(window->sizes.back(), QSize(400, 1));
    EXPECT_EQ(window->minimumSize(), minimum);
    window->findChild<QPushButton*>()->setMinimumHeight(350);
    Open();
    EXPECT_GE(window->height(), 350) << "the minimum still follows the controls";

    host.mainWindowOnly = true;
    window->close();
    ASSERT_TRUE(WaitUntilClosed());
    EXPECT_TRUE(window->sizes.empty());
}

TEST_F(Effects, AWindowReopenedWhileItShrinksHasItsFullSizeAndStaysOpen) {
    Open();
    window->onResize = [&](std::size_t count) {
        if (count == 20) Soon([&] { window->close(); });
        if (count == 40) Soon([&] { window->Open(); });
    };
    window->close();
    ASSERT_TRUE(WaitFor([&] { return window->loads == 2; }));
    QApplication::processEvents();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->size(), QSize(400, 300));
    EXPECT_EQ(window->windowTitle(), "Probe");
    EXPECT_TRUE(item.isChecked());

    window->onResize = {};
    window->close();
    EXPECT_TRUE(WaitUntilClosed()) << "and can be closed again";
}

TEST_F(Effects, AWindowReopenedWhileItFadesCanBeClosedInThatFade) {
    LayeredWindows layers;
    Open();
    bool reopened = false;
    bool closed = false;
    layers.OnOpacity = [&](int opacity) {
        if (opacity == 117 && !reopened) {
            reopened = true;
            Soon([&] { window->Open(); });
        } else if (opacity == 121 && !closed) {
            closed = true;
            Soon([&] { window->close(); });
        }
    };
    window->close();
    ASSERT_TRUE(WaitFor([&] { return closed; }));
    ASSERT_TRUE(WaitUntilClosed());
    EXPECT_FALSE(item.isChecked());
}

TEST_F(Effects, EveryEffectSurvivesTheEndOfItsWindow) {
    Open();
    window->onResize = [&](std::size_t count) {
        if (count == 5) Soon([&] { window.reset(); });
    };
    window->close();
    ASSERT_TRUE(WaitFor([&] { return !window; }));

    LayeredWindows layers;
    for (const int opacity : {1, 91, 147}) {
        window = std::make_unique<Window>(host, &item);
        layers.OnOpacity = [&](int seen) {
            if (window && seen == opacity) Soon([&] { window.reset(); });
        };
        window->Open();
        if (window) window->close();
        EXPECT_TRUE(WaitFor([&] { return !window; }));
    }
}

TEST_F(Effects, ClosingTheProgramFadesEveryVisibleWindowAndEndsItOnce) {
    LayeredWindows layers;
    Window second(host, nullptr);
    Window hidden(host, nullptr);
    QTimer refresh;
    refresh.start(100'000);
    int ends = 0;
    const auto closeProgram = [&] { CloseProgramWithEffects(host, refresh, [&] { ++ends; }); };
    second.Open();
    bool again = false;
    layers.OnOpacity = [&](int opacity) {
        if (opacity != 117 || again) return;
        again = true;
        Soon(closeProgram);
    };
    layers.Take(second);

    // The user closes the main window while another one is still fading in.
    bool closing = false;
    Soon([&] {
        closing = true;
        closeProgram();
    });
    window->Open();
    EXPECT_TRUE(closing);
    EXPECT_FALSE(refresh.isActive());
    EXPECT_EQ(ends, 1);
    EXPECT_EQ(host.Phase, ProgramPhase::Ended);
    EXPECT_EQ(layers.Last(second), 27);
    EXPECT_EQ(layers.Last(host.main), 27);
    EXPECT_EQ(layers.Last(hidden), -1);
    EXPECT_EQ(window->shown, 0) << "nothing resumes";

    hidden.Open();
    EXPECT_FALSE(hidden.isVisible());
}

} // namespace
} // namespace quillbay
