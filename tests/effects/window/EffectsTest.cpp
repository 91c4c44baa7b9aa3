#include "effects/window/EffectHost.h"
#include "effects/window/EffectWindow.h"
#include "effects/window/WindowEffects.h"
#include "effects/window/WindowPlace.h"
#include "platform/window/LayeredWindow.h"
#include "support/SelectorFixtureWindow.h"

namespace quillbay::test {
namespace {

/// Stands in for the layered windows of the platform, which the offscreen one does not have: while such an
/// object lives they exist, and every opacity that a window gets is written down.
class LayeredWindows {
public:
    LayeredWindows() { Current = this; }
    ~LayeredWindows() { Current = nullptr; }

    void Set(const QWidget& window, int opacity) {
        steps_[&window].push_back(opacity);
        last_[&window] = opacity;
        if (OnOpacity) OnOpacity(opacity);
    }
    /// The opacities of a window since the last call; those of the others are forgotten.
    std::vector<int> Take(const QWidget& window) { return std::exchange(steps_, {})[&window]; }
    /// The last opacity of a window, also one that was taken; -1 when it never got one.
    int Last(const QWidget& window) const { return last_.contains(&window) ? last_.at(&window) : -1; }

    std::function<void(int opacity)> OnOpacity;
    static inline LayeredWindows* Current = nullptr;

private:
    std::map<const QWidget*, std::vector<int>> steps_;
    std::map<const QWidget*, int> last_;
};

/// A main window for tests of the others.
class TestHost : public EffectHost {
public:
    TestHost() {
        main.resize(400, 300);
        main.show();
    }
    ClosingSwitches SmoothClosing() const override { return switches; }
    bool SmoothCloseMainWindowOnly() const override { return mainWindowOnly; }
    bool AutoRefresh() const override { return false; }
    void SetAutoRefresh(bool) override {}
    QWidget& MainWindow() override { return main; }

    QWidget main;
    ClosingSwitches switches;
    bool mainWindowOnly = true;
};

/// A window that writes down what happens to it.
class Window : public EffectWindow {
public:
    Window(EffectHost& host, QAction* item) : EffectWindow(host, item) {
        setWindowTitle("Probe");
        (new QVBoxLayout(this))->addWidget(new QPushButton("Button", this));
    }
    void Form_Load() override {
        if (++loads == 1) resize(400, 300);
    }
    void Form_Shown() override { ++shown; }
    void resizeEvent(QResizeEvent* event) override {
        if (!isVisible()) return;
        sizes.push_back(event->size());
        closingCaption = closingCaption || windowTitle() == "Probe - Closing";
        if (onResize) onResize(height());
    }

    int loads = 0;
    int shown = 0;
    std::vector<QSize> sizes;
    bool closingCaption = false;
    std::function<void(int)> onResize; ///< with the new height
};

/// Does it when an effect has come to this opacity or height, in the effect's next yield and only once.
template <typename Action>
std::function<void(int)> At(int wanted, Action action) {
    return [=, done = false](int reached) mutable {
        if (reached == wanted && !std::exchange(done, true))
            QMetaObject::invokeMethod(qApp, action, Qt::QueuedConnection);
    };
}

void Close(QWidget& window) {
    window.close();
    ASSERT_TRUE(WaitFor([&] { return !window.isVisible(); }));
}

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

    TestHost host;
    QAction item;
    std::unique_ptr<Window> window = std::make_unique<Window>(host, &item);
};

class Options : public SelectorFixture {
protected:
    void Open() {
        ASSERT_TRUE(window || Start());
        SelectorFixture::Open("menuManagerOptions", "frmOptions");
    }
    QSlider& Intensity() const { return In<QSlider>("sldFadeIntensity"); }
    QCheckBox& Check(const std::string& name) const { return In<QCheckBox>(name.c_str()); }
};

TEST_F(Effects, ShrinksWindowsOfFixedSizeTooAndGivesTheirSizeBack) {
    for (const bool fixed : {true, false}) {
        window = std::make_unique<Window>(host, &item);
        if (fixed) window->setFixedSize(400, 300);
        if (!fixed) window->setFont(QFont(window->font().family(), 30)); // with which it has grown once
        host.switches.xAxis = fixed;
        Open();
        const QSize minimum = window->minimumSize();
        const QSize maximum = window->maximumSize();
        Close(*window);
        ASSERT_FALSE(window->sizes.empty()) << fixed;
        EXPECT_LE(window->sizes.size(), 400u) << fixed;
        EXPECT_EQ(window->sizes.back(), QSize(fixed ? 1 : 400, 1)) << fixed;
        EXPECT_TRUE(window->closingCaption) << fixed;
        EXPECT_EQ(window->windowTitle(), "Probe") << fixed;
        EXPECT_EQ(window->size(), QSize(400, 300)) << fixed;
        EXPECT_EQ(window->minimumSize(), minimum) << fixed;
        EXPECT_EQ(window->maximumSize(), maximum) << fixed;
        QApplication::processEvents(); // a late event of the closed native window
        Open();
        EXPECT_EQ(window->size(), QSize(400, 300)) << fixed;
        Close(*window);
    }
    window->findChild<QPushButton*>()->setMinimumHeight(350);
    Open();
    EXPECT_GE(window->height(), 350) << "the minimum still follows the controls";
    host.mainWindowOnly = true;
    Close(*window);
    EXPECT_TRUE(window->sizes.empty());
}

TEST_F(Effects, AWindowOpensWhereItWasOrOnAScreenThatExists) {
    const QList<QRect> screens{{0, 0, 800, 600}, {800, 0, 400, 300}};
    for (const auto& [was, is] : std::vector<std::pair<QPoint, QPoint>>{{{-100, 590}, {0, 400}},
                                                                        {{-220, 0}, {-220, 0}},
                                                                        {{-221, 0}, {0, 0}},
                                                                        {{700, 550}, {700, 550}},
                                                                        {{1300, -40}, {900, 0}}})
        EXPECT_EQ(PlaceOnScreens({was, QSize(300, 200)}, screens), is) << was.x();
    EXPECT_EQ(PlaceOnScreens({900, 900, 900, 900}, {}), QPoint(900, 900));

    Open();
    for (const QPoint place : {QPoint(30, 40), QPoint(90'000, 90'000)}) {
        window->move(place);
        Close(*window);
        window->move(7, 7); // as a window manager may
        Open();
        EXPECT_EQ(window->pos() == place, place.x() == 30);
        EXPECT_TRUE(window->screen()->geometry().contains(window->geometry()));
    }
}

TEST_F(Effects, AWindowReopenedWhileItClosesStaysOpenUntilItIsClosedAgain) {
    Open();
    window->onResize = At(270, [&] {
        window->close(); // changes nothing
        window->onResize = At(240, [&] { window->Open(); });
    });
    window->close();
    ASSERT_TRUE(WaitFor([&] { return window->loads == 2; }));
    QApplication::processEvents();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->size(), QSize(400, 300));
    EXPECT_EQ(window->windowTitle(), "Probe");
    EXPECT_TRUE(item.isChecked());
    Close(*window);

    LayeredWindows layers;
    Open();
    layers.OnOpacity = At(117, [&] {
        layers.OnOpacity = At(121, [&] { window->close(); });
        window->Open();
    });
    window->close();
    ASSERT_TRUE(WaitFor([&] { return window->loads == 4; }));
    ASSERT_TRUE(WaitFor([&] { return !window->isVisible(); }));
    EXPECT_FALSE(item.isChecked());
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
    layers.OnOpacity = At(117, closeProgram); // again, while it closes
    // The user closes the main window while another one is opening.
    QMetaObject::invokeMethod(qApp, closeProgram, Qt::QueuedConnection);
    window->Open();
    closeProgram(); // and once more when it has ended
    EXPECT_FALSE(refresh.isActive());
    EXPECT_EQ(ends, 1);
    EXPECT_EQ(host.Phase, ProgramPhase::Ended);
    EXPECT_EQ(layers.Last(second), 27);
    EXPECT_EQ(layers.Take(host.main), (std::vector<int>{237, 207, 177, 147, 117, 87, 57, 27})) << "once";
    EXPECT_EQ(window->shown, 0) << "nothing resumes";
    hidden.Open();
    EXPECT_EQ(layers.Last(hidden), -1) << "neither faded out nor opened any more";
}

TEST_F(Options, MirrorTheMenuAndStoreEveryChangeButNothingAtLoading) {
    settings.values = {{"Fade/Intensity", "3e9 rubbish"}, {"Fade/Speed", "-7"}};
    const auto stored = settings.values;
    Open();
    QSlider& speed = In<QSlider>("sldFadeSpeed");
    EXPECT_EQ(Intensity().value(), 255);
    EXPECT_EQ(speed.value(), 1);
    EXPECT_EQ(settings.values, stored);
    EXPECT_FALSE(Item("menuManagerOptions").isChecked());

    for (const std::string name : {"XAxis", "YAxis", "Simultaneous", "MainWindowOnly"}) {
        QAction& item = Item(("menuManagerSmoothClosing" + name).c_str());
        QCheckBox& box = Check("chk" + name);
        const bool on = box.isChecked();
        EXPECT_EQ(on, item.isChecked()) << name;
        item.trigger();
        EXPECT_EQ(box.isChecked(), !on) << name;
        box.click();
        EXPECT_EQ(item.isChecked(), on) << name;
        box.click();
    }
    Intensity().setValue(100);
    speed.setValue(30);
    QString now;
    for (const auto& [key, value] : settings.values)
        now += key.section('/', 1) + '=' + value + ' ';
    EXPECT_EQ(now,
              "Intensity=100 Speed=30 Main Window Only=False Simultaneous=True XAxis=False YAxis=False ");
    EXPECT_EQ(main->FadeIntensity + main->FadeSpeed, 130);
    EXPECT_EQ(In<QLabel>("lblFadeIntensity").text(), "100");

    settings.values["Fade/Intensity"] = "77.5";
    Check("chkAutoRefresh").click();
    Close(*opened);
    Open();
    EXPECT_EQ(Intensity().value(), 78) << "read afresh";
    EXPECT_TRUE(Check("chkAutoRefresh").isChecked() && !main->AutoRefresh());
    Check("chkAutoRefresh").click();
    EXPECT_TRUE(main->AutoRefresh());
}

TEST_F(Options, FadeThisWindowAtOnceAndTheOthersWhenItCloses) {
    LayeredWindows layers;
    settings.values["Fade/Speed"] = "30";
    Open();
    layers.Take(*opened);
    Intensity().setValue(234);
    EXPECT_EQ(layers.Take(*opened), (std::vector<int>{237, 236, 235, 234}));
    layers.OnOpacity = At(200, [&] { Intensity().setValue(220); }); // in the middle of its own fade
    Intensity().setValue(190);
    EXPECT_EQ(layers.Last(*opened), 220);
    EXPECT_EQ(settings.values["Fade/Intensity"], "220");
    layers.Take(*opened);

    In<QPushButton>("cmdTest").click();
    const std::vector<int> replayed = layers.Take(*opened);
    EXPECT_EQ(replayed.front(), 220);
    EXPECT_EQ(std::ranges::count(replayed, 1), 1) << "faded in again";
    EXPECT_EQ(layers.Last(*window), 211);
    Close(*opened);
    EXPECT_LT(layers.Last(*opened), 30) << "not with the others";
    EXPECT_EQ(layers.Take(*window), (std::vector<int>{237, 230, 223}));

    main->FadeIntensity = 0; // as after a start with a text that is no number
    Open();
    Close(*opened);
    EXPECT_EQ(layers.Last(*window), 255) << "not invisible";
}

} // namespace
} // namespace quillbay::test

// These take the place of the platform's own in the test program.
namespace quillbay {

bool LayeredWindowsAvailable() { return test::LayeredWindows::Current != nullptr; }

void SetLayeredStyle(QWidget&, bool) {}

bool SetWindowAlpha(QWidget& window, int opacity) {
    if (LayeredWindowsAvailable()) test::LayeredWindows::Current->Set(window, opacity);
    return LayeredWindowsAvailable();
}

} // namespace quillbay
