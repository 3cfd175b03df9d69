// Pictures under the mouse and the keyboard: the events arrive at the units that they point to,
// whatever is scrolled away and however large it is drawn.
#include "qt/window_kit.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QTimer>

#include <cstdio>
#include <ctime>

#include "editor/edit.h"
#include "editor/hand/hand.h"
#include "editor/hand/tools.h"
#include "editor/model/records.h"
#include "editor/model/vel_segs.h"
#include "shell/command_numbers.h"
#include "shell/picture_windows.h"
#include "shell/qt/q_pictures.h"
#include "shell/qt/q_text.h"
#include "shell/vel_wins.h"

namespace velora {

using kit::WindowTest;

class PictureWindow : public WindowTest {
protected:
  qt::PictureArea &open() {
    choose(kCmdNewFunction);
    return *window("Functions").view;
  }
  static void click(qt::PictureArea &view, Point unit) {
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.dot_at(unit).toPoint());
    settle();
  }
  // The slot of the node with that label; 0 for none.
  static int slot_of(const qt::PictureArea &view, const std::string &label) {
    const WinInfo *wi = picture_of(view.id());
    for (int slot = 1; wi != nullptr && slot < wi->seg_ments.slots(); ++slot)
      if (wi->seg_ments[slot] != nullptr && wi->seg_ments[slot]->label == label)
        return slot;
    return 0;
  }
  // Places a function box by the tool and names it in its editor.
  static int place_box(qt::PictureArea &view, Point at, const std::string &label) {
    choose(kCmdAddFunctions);
    click(view, at);
    type(&view, label);
    key(&view, Qt::Key_Return);
    settle();
    return slot_of(view, label);
  }
};

TEST_F(PictureWindow, ABoxIsPlacedNamedAndTakenBack) {
  qt::PictureArea &view = open();
  const int slot = place_box(view, {200, 150}, "append");
  ASSERT_NE(slot, 0);
  EXPECT_TRUE(picture_of(view.id())->seg_ments[slot]->box().contains({200, 150}));
  EXPECT_TRUE(enabled(kCmdUndo));
  for (int i = 0; i < 3 && slot_of(view, "append") != 0; ++i)
    key(&view, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(slot_of(view, "append"), 0);
}

TEST_F(PictureWindow, PointsAreTheSameScrolledAndZoomed) {
  qt::PictureArea &view = open();
  view.set_extent({-300, -100, 2000, 1500});
  for (const double zoom : {0.5, 1.0, 1.75}) {
    view.show_from({-120, 40}, zoom);
    EXPECT_EQ(view.unit_at({0, 0}), (Point{-120, 40})) << zoom;
    const Point there{300, 200};
    EXPECT_EQ(view.unit_at(view.dot_at(there) + QPointF(zoom / 2, zoom / 2)), there) << zoom;
  }
}

TEST_F(PictureWindow, WheelWithControlGrowsThePictureUnderThePointer) {
  qt::PictureArea &view = open();
  view.set_extent({0, 0, 2000, 1500});
  const QPointF at(120, 90);
  const Point before = view.unit_at(at);
  QWheelEvent turn(at, view.viewport()->mapToGlobal(at), {}, {0, 120}, Qt::NoButton,
                   Qt::ControlModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(view.viewport(), &turn);
  EXPECT_GT(view.zoom(), 1.0);
  EXPECT_NEAR(view.unit_at(at).x, before.x, 2);
  EXPECT_NEAR(view.unit_at(at).y, before.y, 2);
}

TEST_F(PictureWindow, IsToldInWords) {
  qt::PictureArea &view = open();
  const int slot = place_box(view, {200, 150}, "append");
  gDesktop->invalidate(view.id());
  EXPECT_NE(view.accessibleDescription().indexOf(QStringLiteral("box %1 append").arg(slot)), -1)
      << qt::narrow(view.accessibleDescription());
  EXPECT_EQ(view.accessibleName(), window("Functions").sub->windowTitle());
}

// What is drawn reaches the screen: the middle of a box's upper rim is dark, beside it is paper.
TEST_F(PictureWindow, IsDrawnWhereItStands) {
  qt::PictureArea &view = open();
  const int slot = place_box(view, {200, 150}, "append");
  ASSERT_NE(slot, 0);
  const Rect box = picture_of(view.id())->seg_ments[slot]->box();
  const QImage shown = view.viewport()->grab().toImage();
  const auto dot = [&](int x, int y) { return qGray(shown.pixel(view.dot_at({x, y}).toPoint())); };
  EXPECT_LT(dot(box.left + box.width() / 4, box.top), 160);
  EXPECT_EQ(dot(box.left - 30, box.top - 12), 255);
}

// The right button chooses what lies under it and shows what can be done with it.
TEST_F(PictureWindow, RightButtonShowsAMenuForWhatLiesThere) {
  qt::PictureArea &view = open();
  const int slot = place_box(view, {200, 150}, "append");
  key(&view, Qt::Key_Escape);
  click(view, {20, 300});
  EXPECT_EQ(selected_node(picture_of(view.id())), 0);
  const QPoint at = view.dot_at({200, 150}).toPoint();
  bool removable = false;
  QTimer::singleShot(50, &view, [&removable] {
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    for (QAction *action : menu->actions())
      removable =
          removable || (action->objectName() == QStringLiteral("item%1").arg(kCmdClearSelection) &&
                        action->isEnabled());
    menu->close();
  });
  QTest::mousePress(view.viewport(), Qt::RightButton, {}, at);
  QContextMenuEvent asked(QContextMenuEvent::Mouse, at, view.viewport()->mapToGlobal(at));
  QApplication::sendEvent(view.viewport(), &asked);
  QTest::mouseRelease(view.viewport(), Qt::RightButton, {}, at);
  EXPECT_TRUE(removable);
  EXPECT_EQ(selected_node(picture_of(view.id())), slot);
}

// Nothing that is in sight is left out, however many dots a unit has and whatever is scrolled away.
TEST_F(PictureWindow, IsDrawnWholeOnSurfacesOfAnyResolution) {
  qt::PictureArea &view = open();
  ASSERT_NE(place_box(view, {300, 250}, "append"), 0);
  for (const int dots : {1, 2, 3}) {
    QImage image(400 * dots, 300 * dots, QImage::Format_RGB32);
    image.setDevicePixelRatio(dots);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(-20, -10);
    view.draw(painter);
    painter.end();
    const Rect box = picture_of(view.id())->seg_ments[slot_of(view, "append")]->box();
    const QPoint rim((box.left + box.width() / 4 - 20) * dots + dots / 2,
                     (box.top - 10) * dots + dots / 2);
    EXPECT_LT(qGray(image.pixel(rim)), 160) << dots;
  }
}

// A thousand boxes with their arrows and missing inputs: painting all of them takes less than a
// frame in a release build, and so does a step of moving one.
TEST_F(PictureWindow, ALargePictureIsPaintedWithinAFrame) {
  qt::PictureArea &view = open();
  WinInfo *wi = picture_of(view.id());
  edit_picture(wi, "Draw", [wi] {
    set_up_fresh(wi);
    std::vector<int> boxes;
    for (int i = 0; i < 1000; ++i) {
      boxes.push_back(add_node(wi, kToolFunction, 60 + i % 40 * 80, 80 + i / 40 * 60));
      wi->seg_ments[boxes.back()]->label = i % 2 == 0 ? "append" : "if";
      // Each feeds one of the row below it, so that every second box there has an input.
      if (i >= 40)
        put_arc_between(wi, boxes[static_cast<std::size_t>(i - 40)], boxes.back() - i % 2 * 2,
                        kArc);
    }
  });
  window("Functions").sub->showMaximized();
  choose(kCmdZoomFit);
  settle();
  constexpr int kTimes = 10;
  // Time of work, whatever else the machine does.
  const auto milliseconds = [](std::clock_t since) {
    return 1000.0 * static_cast<double>(std::clock() - since) / CLOCKS_PER_SEC / kTimes;
  };
  std::clock_t begin = std::clock();
  for (int i = 0; i < kTimes; ++i)
    view.viewport()->repaint();
  const double paint = milliseconds(begin);
  const Point at = wi->seg_ments[2]->box().centre();
  QTest::mousePress(view.viewport(), Qt::LeftButton, {}, view.dot_at(at).toPoint());
  begin = std::clock();
  for (int i = 1; i <= kTimes; ++i) {
    QTest::mouseMove(view.viewport(), (view.dot_at(at) + QPointF(3 * i, 2 * i)).toPoint());
    view.viewport()->repaint();
  }
  const double move = milliseconds(begin);
  EXPECT_EQ(gHand.state, HandState::moving);
  QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, view.dot_at(at).toPoint());
  std::printf("1000 boxes: painted in %.1f ms, moved in %.1f ms a step\n", paint, move);
  EXPECT_LT(paint, 400) << "with the sanitizers; a release build takes a fraction";
  EXPECT_LT(move, 400);
}

} // namespace velora
