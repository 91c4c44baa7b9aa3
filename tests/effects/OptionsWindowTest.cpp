#include "support/AnswerBoxesWindow.h"
#include "support/FakeLayeredWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSlider>

#include <algorithm>
#include <utility>

namespace quillbay::test {
namespace {

class Options : public SelectorFixture {
protected:
    void Open() {
        ASSERT_TRUE(window || Start());
        options = &OpenWindow("menuManagerOptions", "frmOptions");
    }
    QSlider& Intensity() const { return Control<QSlider>(*options, "sldFadeIntensity"); }
    QCheckBox& Check(const char* name) const { return Control<QCheckBox>(*options, name); }
    void Close() const {
        ASSERT_TRUE(options->close() || WaitFor([&] { return !options->isVisible(); }));
    }

    QWidget* options = nullptr;
};

TEST_F(Options, MirrorTheMenuAndStoreEveryChangeButNothingAtLoading) {
    settings.values = {{"Fade/Intensity", "3e9 rubbish"}, {"Fade/Speed", "-7"}};
    const auto stored = settings.values;
    Open();
    QSlider& speed = Control<QSlider>(*options, "sldFadeSpeed");
    EXPECT_EQ(Intensity().value(), 255);
    EXPECT_EQ(speed.value(), 1);
    EXPECT_EQ(settings.values, stored);
    EXPECT_EQ(window->FadeIntensity, 0) << "only the slider is brought into its range";
    EXPECT_FALSE(Item("menuManagerOptions").isChecked());

    for (const char* name : {"XAxis", "YAxis", "Simultaneous", "MainWindowOnly"}) {
        QAction& item = Item((std::string("menuManagerSmoothClosing") + name).c_str());
        QCheckBox& box = Check((std::string("chk") + name).c_str());
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
    EXPECT_EQ(window->FadeIntensity + window->FadeSpeed, 130);
    EXPECT_EQ(Control<QLabel>(*options, "lblFadeIntensity").text(), "100");
    settings.values["Fade/Intensity"] = "77.5";
    Check("chkAutoRefresh").click();
    window->showMinimized();
    window->showNormal();
    Close();
    Open();
    EXPECT_EQ(Intensity().value(), 78) << "read afresh";
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

    bool moved = false; // again in the middle of its own fade
    layers.OnOpacity = [&](int opacity) {
        if (opacity != 200 || std::exchange(moved, true)) return;
        QMetaObject::invokeMethod(
            qApp, [&] { Intensity().setValue(220); }, Qt::QueuedConnection);
    };
    Intensity().setValue(190);
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

    window->FadeIntensity = 0; // as after a start with a text that is no number
    Open();
    Close();
    EXPECT_EQ(layers.Last(*window), 255) << "not invisible";
}

} // namespace
} // namespace quillbay::test
