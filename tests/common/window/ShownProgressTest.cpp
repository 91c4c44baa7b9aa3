#include "common/window/ShownProgress.h"

#include "support/AnswerBoxesWindow.h"

#include <QLineEdit>
#include <QProgressBar>
#include <QtTest>

namespace quillbay::test {
namespace {

TEST(ShownProgressTest, AWindowLivesDuringALongJobButNothingReachesIt) {
    class Window : public QWidget {
    public:
        int paints = 0;

    protected:
        void paintEvent(QPaintEvent*) override { ++paints; }
    } window;
    QProgressBar bar(&window);
    QLineEdit text(&window);
    QTimer timer;
    int fired = 0;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++fired; });
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    timer.start(0);
    {
        ShownProgress progress(bar);
        window.update();
        QCoreApplication::postEvent(&text, new QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "a"));
        QCoreApplication::postEvent(&window, new QCloseEvent);
        const QDeadlineTimer limit(10'000);
        const int before = window.paints;
        while (!progress.IsStopAsked() && !limit.hasExpired())
            progress.Set(1, 3);
        EXPECT_FALSE(limit.hasExpired());
        EXPECT_EQ(bar.value(), 33);
        EXPECT_GT(window.paints, before);
        EXPECT_TRUE(window.isVisible());
    }
    EXPECT_EQ(text.text(), "");
    EXPECT_EQ(fired, 0);
    EXPECT_TRUE(WaitFor([&] { return fired > 0; }));
}

} // namespace
} // namespace quillbay::test
