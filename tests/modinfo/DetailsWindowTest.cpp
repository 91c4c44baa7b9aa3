#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImage>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTimer>

namespace quillbay::test {
namespace {

class Details : public SelectorFixture {
protected:
    QLabel& Label(const char* name) const { return Control<QLabel>(name); }
    QString Text(const char* name) const { return Label(name).text(); }
};

QByteArray Picture(int width, int height, const char* format) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

TEST_F(Details, TheListKeepsItsPlaceInBothLayouts) {
    MakeFolder("program/mods/1 none");
    Write("program/mods/2 large/ModPic.bmp", Picture(600, 200, "bmp"));
    Write("program/mods/3 small/ModPic.jpg", Picture(100, 50, "jpg"));
    Write("program/mods/4 broken/ModPic.bmp", "BM no picture");
    Write("program/mods/5 png/ModPic.bmp", Picture(10, 10, "png"));
    ASSERT_TRUE(Start());
    window->move(100, 200);
    QCoreApplication::processEvents();
    const int base = window->height();
    const QPoint list = Mods().mapToGlobal(QPoint());
    const QLabel& area = Label("picModsPic");
    EXPECT_TRUE(area.isHidden());

    struct Expected {
        QSize picture;
        int areaHeight;
        bool valid;
    };
    const std::vector<Expected> expected{
        {{457, 89}, 89, true}, {{100, 50}, 89, true}, {{}, 1, false}, {{}, 1, false}};
    for (int row = 1; row <= 4; ++row) {
        Mods().setCurrentRow(row);
        const Expected& wanted = expected[static_cast<std::size_t>(row - 1)];
        EXPECT_EQ(area.pixmap().size(), wanted.valid ? wanted.picture : QSize(0, 0)) << row;
        EXPECT_EQ(area.size(), QSize(457, wanted.areaHeight)) << row;
        EXPECT_TRUE(area.isVisible());
        EXPECT_EQ(Label("lblInvalidPic").isVisible(), !wanted.valid) << row;
        EXPECT_EQ(window->height(), base + 89);
        EXPECT_EQ(Mods().mapToGlobal(QPoint()), list) << row;
    }
    Mods().setCurrentRow(0);
    EXPECT_TRUE(area.isHidden());
    EXPECT_TRUE(Label("lblInvalidPic").isHidden());
    EXPECT_EQ(window->height(), base);
    EXPECT_EQ(Mods().mapToGlobal(QPoint()), list);

    window->move(100, 20);
    Mods().setCurrentRow(1);
    EXPECT_EQ(window->y(), 0);
}

TEST_F(Details, TextsArePlainWhateverTheyHoldAndMoveNothing) {
    const QByteArray longText(20'000, 'x');
    Write("program/mods/Alpha/ModInfo.txt",
          "Author: <b>Tom</b> && J&erry\r\nVersion: %1\nsecond line\nthird\r\n"
          "Other Heading: <i>Credits</i>\r\nDescription: " +
              longText + "\r\nOther: " + longText + "\r\n");
    Write("program/mods/Alpha/Docs/big", QByteArray(2'000'000, 'x'));
    MakeFolder("program/mods/Bravo");
    QLocale::setDefault(QLocale(QLocale::German));
    ASSERT_TRUE(Start());
    EXPECT_EQ(Text("lblModsMaker"), "(File 'ModInfo.txt' not found)");
    Mods().setCurrentRow(1);
    std::map<QString, QRect> places;
    for (QWidget* control :
         window->centralWidget()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
        places[control->objectName()] = control->geometry();
    const QSize size = window->size();

    Mods().setCurrentRow(0);
    QCoreApplication::processEvents();
    QLocale::setDefault(QLocale::c());
    EXPECT_EQ(window->size(), size);
    for (const auto& [name, place] : places)
        EXPECT_EQ(Control<QWidget>(name.toLatin1().constData()).geometry(), place) << qPrintable(name);
    EXPECT_EQ(Text("lblModsMaker"), "<b>Tom</b> && J&erry");
    EXPECT_EQ(Text("lblModsVersion"), "%1\nsecond line\nthird");
    EXPECT_EQ(Text("lblModsOtherHeading"), "<i>Credits</i>");
    EXPECT_EQ(Text("lblModsOther").size(), 10'000);
    EXPECT_EQ(Text("lblModSize"), "Size of current mod: 1,99 MB");
    EXPECT_EQ(Text("lblModNumOfFiles"), "Number of files in current mod: 1");
    for (const char* name :
         {"lblModsMaker", "lblModsDescription", "lblModsVersion", "lblModsOtherHeading", "lblModsOther"}) {
        EXPECT_EQ(Label(name).textFormat(), Qt::PlainText) << name;
        EXPECT_NE(Label(name).buddy(), nullptr) << name << " would show its access mark";
    }
    EXPECT_FALSE(Label("lblModsVersion").toolTip().contains("<b>Tom"));
}

TEST_F(Details, ComeByThemselvesOnceAfterStart) {
    Write("program/mods/Alpha/ModInfo.txt", "Author: Bob\r\n");
    ASSERT_TRUE(Start());
    auto& timer = Control<QTimer>("timClickMod");
    ASSERT_TRUE(timer.isActive());
    timer.start(0);
    EXPECT_TRUE(WaitFor([&] { return Text("lblModsMaker") == "Bob"; }));
    EXPECT_FALSE(timer.isActive());
    EXPECT_EQ(window->focusWidget(), &Mods());
}

} // namespace
} // namespace quillbay::test
