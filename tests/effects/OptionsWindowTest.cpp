#include "support/AnswerBoxesWindow.h"
#include "support/FakeLayeredWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSlider>

namespace quillbay::test {
namespace {

class Options : public SelectorFixture {
protected:
    void Open() {
        ASSERT_TRUE(Start());
        options = &OpenWindow("menuManagerOptions", "frmOptions");
    }
    QSlider& Intensity() const { return Control<QSlider>(*options, "sldFadeIntensity"); }
    QSlider& Speed() const { return Control<QSlider>(*options, "sldFadeSpeed"); }
    QCheckBox& Check(const char* name) const { return Control<QCheckBox>(*options, name); }
    void Close() const {
        options->close();
        ASSERT_TRUE(WaitFor([&] { return !options->isVisible(); }));
    }

    QWidget* options = nullptr;
};

TEST_F(Options, MirrorTheMenuAndStoreEveryChangeButNothingAtLoading) {
    settings.values = {{"Fade/Intensity", "3e9 rubbish"}, {"Fade/Speed", "-7"}};
    const auto stored = settings.values;
    Open();
    EXPECT_EQ(Intensity().value(), 255);
    EXPECT_EQ(Speed().value(), 1);
    EXPECT_EQ(settings.values, stored);
    EXPECT_EQ(window->FadeIntensity, 0) << "only the slider is brought into its range";
    EXPECT_FALSE(Item("menuManagerOptions").isChecked());

    const std::pair<const char*, const char*> switches[]{
        {"chkXAxis", "menuManagerSmoothClosingXAxis"},
        {"chkYAxis", "menuManagerSmoothClosingYAxis"},
        {"chkSimultaneous", "menuManagerSmoothClosingSimultaneous"},
        {"chkMainWindowOnly", "menuManagerSmoothClosingMainWindowOnly"}};
    for (const auto& [box, item] : switches) {
        const bool on = Check(box).isChecked();
        EXPECT_EQ(on, Item(item).isChecked()) << box;
        Check(box).click();
        EXPECT_EQ(Item(item).isChecked(), !on) << box;
        Item(item).trigger();
        EXPECT_EQ(Check(box).isChecked(), on) << box;
        Check(box).click();
    }
    Intensity().setValue(100);
    Speed().setValue(30);
    EXPECT_EQ(settings.values, (std::map<QString, QString>{{"Fade/Intensity", "100"},
                                                           {"Fade/Speed", "30"},
                                                           {"Smooth Closing/XAxis", "False"},
                                                           {"Smooth Closing/YAxis", "False"},
                                                           {"Smooth Closing/Simultaneous", "True"},
                                                           {"Smooth Closing/Main Window Only", "False"}}));
    EXPECT_EQ(window->FadeIntensity, 100);
    EXPECT_EQ(window->FadeSpeed, 30);
    EXPECT_EQ(Control<QLabel>(*options, "lblFadeIntensity").text(), "100");
    EXPECT_EQ(Control<QLabel>(*options, "lblFadeSpeed").text(), "30");

    Close();
    settings.values["Fade/Intensity"] = "77.5";
    OpenWindow("menuManagerOptions", "frmOptions");
    EXPECT_EQ(Intensity().value(), 78) << "read afresh";
}

TEST_F(Options, SwitchTheAutomaticRefreshForTheRun) {
    Open();
    EXPECT_FALSE(Check("chkAutoRefresh").isChecked());
    Check("chkAutoRefresh").click();
    EXPECT_FALSE(window->AutoRefresh());
    window->showMinimized();
    window->showNormal();
    window->RefreshModList({});
    Close();
    OpenWindow("menuManagerOptions", "frmOptions");
    EXPECT_TRUE(Check("chkAutoRefresh").isChecked());
    EXPECT_FALSE(window->AutoRefresh());
    Check("chkAutoRefresh").click();
    EXPECT_TRUE(window->AutoRefresh());
}

TEST_F(Options, FadeThisWindowAtOnceAndTheOthersWhenItCloses) {
    LayeredWindows layers;
    settings.values["Fade/Speed"] = "30";
    Open();
    layers.Take(*options);
    Intensity().setValue(234);
    EXPECT_EQ(layers.Take(*options), (std::vector<int>{237, 236, 235, 234}));

    // Moved again in the middle of its own fade.
    bool moved = false;
    layers.OnOpacity = [&](int opacity) {
        if (opacity != 200 || moved) return;
        moved = true;
        QMetaObject::invokeMethod(
            qApp, [&] { Intensity().setValue(220); }, Qt::QueuedConnection);
    };
    Intensity().setValue(190);
    EXPECT_EQ(window->FadeIntensity, 220);
    EXPECT_EQ(layers.Last(*options), 220);
    EXPECT_EQ(settings.values["Fade/Intensity"], "220");
    layers.Take(*options);

    Control<QPushButton>(*options, "cmdTest").click();
    const std::vector<int> replayed = layers.Take(*options);
    EXPECT_EQ(replayed.front(), 220);
    EXPECT_EQ(std::count(replayed.begin(), replayed.end(), 1), 1) << "faded in again";

    EXPECT_EQ(layers.Last(*window), 211);
    Close();
    EXPECT_EQ(layers.Take(*window), (std::vector<int>{237, 230, 223}));
}

TEST_F(Options, OthersStayVisibleWhateverIntensityIsStored) {
    LayeredWindows layers;
    settings.values["Fade/Intensity"] = "none";
    Open();
    Close();
    EXPECT_EQ(layers.Last(*window), 255);
}

} // namespace
} // namespace quillbay::test
