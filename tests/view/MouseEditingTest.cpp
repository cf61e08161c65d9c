// Real mouse events into a real canvas: what each press, drag and release
// does to the page, and what the view tells its parent and its host.
#include "CanvasFixture.h"

#include <QApplication>
#include <QPaintEvent>
#include <QScrollBar>
#include <QStyle>

namespace {

using Names = std::vector<std::string>;

// What a widget repaints.
class PaintedRegions : public QObject {
public:
    explicit PaintedRegions(QWidget* widget) { widget->installEventFilter(this); }
    QRegion Collect()
    {
        QApplication::processEvents();
        return std::exchange(region_, {});
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            region_ += static_cast<QPaintEvent*>(event)->region();
        return false;
    }

private:
    QRegion region_;
};

TEST_F(CanvasTest, PressesSelectExtendAndToggleTheControlUnderThePointer)
{
    OSCControl& a = Add(kToggle, 100, 100, 40, 40, "A");
    OSCControl& b = Add(kToggle, 200, 100, 40, 40, "B");
    for (const json& c : CanvasCases("presses")) {
        SCOPED_TRACE(c["what"].get<std::string>());
        const Names selected = c["selected"];
        a.selected = std::count(selected.begin(), selected.end(), "A");
        b.selected = std::count(selected.begin(), selected.end(), "B");
        Qt::KeyboardModifiers keys;
        for (const json& key : c.value("keys", json::array()))
            keys |= key == "Shift" ? Qt::ShiftModifier : Qt::ControlModifier;
        const bool onA = c["on"] == "A";
        const QPoint at = onA ? QPoint(110, 110) : QPoint(500, 500);
        Press(at, keys);
        EXPECT_EQ(SelectedNames(), c["after"].get<Names>());
        // A press on a control drags the selection, even when it deselects the control.
        EXPECT_EQ(view->movingSelection, onA);
        EXPECT_EQ(view->rubberBanding, !onA);
        EXPECT_EQ(QWidget::mouseGrabber(), view) << "an edit holds the mouse";
        Release(at, keys);
        EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
    }
}

TEST_F(CanvasTest, TheRubberBandSelectsWhatItTouchesAndShiftAddsToTheSelection)
{
    Add(kFader, 100, 100, 40, 100, "A");
    Add(kFader, 200, 100, 40, 100, "B");
    Add(kFader, 300, 100, 40, 100, "C").selected = 1;
    Drag({150, 300}, {110, 190});
    EXPECT_EQ(SelectedNames(), Names{"A"});
    Drag({250, 90}, {150, 60}, Qt::ShiftModifier);
    EXPECT_EQ(SelectedNames(), Names{"A"});
    Drag({150, 300}, {239, 199}, Qt::ShiftModifier);
    EXPECT_EQ(SelectedNames(), (Names{"A", "B"}));
    EXPECT_EQ(view->rubberBanding, 0);
}

TEST_F(CanvasTest, ADraggedSelectionMovesOnReleaseOnlyAndNotOffThePage)
{
    OSCControl& a = Add(kKnob, 100, 100, 40, 40, "A");
    OSCControl& b = Add(kKnob, 200, 100, 40, 40, "B");
    b.selected = 1;
    Press({110, 110}, Qt::ShiftModifier);
    Move({140, 130});
    EXPECT_EQ(a.x, 100) << "nothing moves while dragging";
    Release({140, 130});
    EXPECT_EQ(Json(a.Rect()), json({130, 120, 170, 160}));
    EXPECT_EQ(Json(b.Rect()), json({230, 120, 270, 160}));
    Drag({140, 130}, {1000, 130});
    EXPECT_EQ(b.x, 230) << "B would leave the screen";
}

TEST_F(CanvasTest, DraggingAnEdgeResizesEverySelectedControlAndTellsTheParent)
{
    OSCControl& fader = Add(kFader, 100, 100, 40, 40, "F");
    OSCControl& knob = Add(kKnob, 200, 100, 40, 40, "K");
    knob.selected = fader.selected = 1;
    Press({120, 141});  // the fader's bottom zone
    EXPECT_EQ(view->resizeEdge, 3);
    Move({120, 131});
    EXPECT_EQ(fader.height, 40) << "40 - 10 is under the minimum";
    Move({120, 139});
    EXPECT_EQ(fader.height, 48);
    EXPECT_EQ(Json(knob.Rect()), json({200, 100, 248, 148})) << "a knob stays square";
    EXPECT_EQ(parent.Take(WM_OSC_SETTITLE).size(), 2u);
    Release({120, 139});
    EXPECT_EQ(view->resizeEdge, 0);

    knob.selected = 0;
    Drag({251, 120}, {271, 120});  // the knob's right zone
    EXPECT_EQ(Json(knob.Rect()), json({200, 100, 268, 168}));
    EXPECT_EQ(SelectedNames(), Names{"K"}) << "an unselected control's edge selects only it";
    EXPECT_EQ(fader.width, 40) << "only selected controls resize";
}

TEST_F(CanvasTest, APressInTheTitleStripFlipsTestModeWhereverThePageIsScrolled)
{
    Press({10, 34});
    EXPECT_EQ(view->testMode, 1);
    Press({10, 35});
    EXPECT_EQ(view->testMode, 1);
    EXPECT_EQ(view->rubberBanding, 1);
    Release({10, 35});
    SetClientSize(500, 300);
    view->OnVScroll(kThumbTrack, 20, view->VerticalBar());
    EXPECT_EQ(view->VerticalBar()->value(), 20);
    Press({10, 15});
    EXPECT_EQ(view->testMode, 1) << "layout y 35";
    Release({10, 15});
    Press({10, 14});
    EXPECT_EQ(view->testMode, 0) << "layout y 34";
}

TEST_F(CanvasTest, InTestModeAControlFollowsThePointerFromPressToReleaseOnIt)
{
    OSCControl& fader = Add(kFader, 100, 100, 40, 100, "F");
    std::strcpy(fader.command, "/TRVX/ID1/SetVal/Ctl7");
    OSCControl& button = Add(kPushButton, 200, 100, 40, 40, "B");
    view->testMode = 1;
    Press({120, 101});
    Move({120, 150});
    Release({120, 198});
    const auto values = hostWindow.Take(WM_OSC_TESTVALUE);
    ASSERT_EQ(values.size(), 3u);
    EXPECT_EQ((std::vector{values[0].wParam, values[1].wParam, values[2].wParam}),
              (std::vector<std::intptr_t>{127, 64, 0}));
    EXPECT_EQ(values[0].components, (Names{"ID1", "SetVal", "Ctl7"}));
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr) << "operating holds no capture";
    EXPECT_EQ(fader.selected, 0);

    Press({210, 110});
    Release({210, 300});
    EXPECT_TRUE(hostWindow.Take(WM_OSC_TESTVALUE).empty()) << "released away: no release value";
    EXPECT_EQ(view->activeControl, nullptr);
    Drag({210, 110}, {220, 120});
    EXPECT_EQ(hostWindow.Take(WM_OSC_TESTVALUE).size(), 1u);
    EXPECT_EQ(button.x, 200) << "test mode drags nothing";
    Drag({199, 120}, {190, 120});
    EXPECT_EQ(button.width, 49) << "edges still resize in test mode";
}

TEST_F(CanvasTest, AMoveShowsTheControlUnderThePointerElseTheFirstSelectedAndTheCursorShowsEdges)
{
    Add(kFader, 100, 100, 40, 40, "F");
    Add(kFader, 200, 100, 40, 100, "Vol").selected = 1;
    const auto status = [&](QPoint at) {  // the one status text the move sent
        Move(at, Qt::NoButton);
        const auto texts = hostWindow.Take(WM_OSC_HOSTREQUEST);
        return texts.size() == 1 ? texts[0].text : std::to_string(texts.size()) + " texts";
    };
    const std::string vol = "Vol: x=200 y=100 w=40, h=100";
    const struct {
        QPoint at;
        Qt::CursorShape shape;
        std::string status;
    } cases[] = {{{120, 99}, Qt::SizeVerCursor, vol},
                 {{120, 141}, Qt::SizeVerCursor, vol},
                 {{97, 120}, Qt::SizeHorCursor, vol},
                 {{142, 120}, Qt::SizeHorCursor, vol},
                 {{120, 120}, Qt::ArrowCursor, "F: x=100 y=100 w=40, h=40"},
                 {{97, 120}, Qt::SizeHorCursor, vol},
                 {{400, 400}, Qt::ArrowCursor, vol}};
    for (const auto& c : cases) {
        EXPECT_EQ(status(c.at), c.status) << c.at.x() << "," << c.at.y();
        EXPECT_EQ(view->cursor().shape(), c.shape) << c.at.x() << "," << c.at.y();
    }
    project.pages[0]->controls[1]->selected = 0;
    EXPECT_EQ(status({400, 400}), "");
    project.pages[0]->controls[1]->selected = 1;
    Press({210, 110});
    EXPECT_EQ(status({120, 99}), "Vol: x=110 y=89 w=40, h=100") << "where the drag will put it";
    EXPECT_EQ(view->cursor().shape(), Qt::ArrowCursor) << "a dragged selection keeps the cursor";
}

TEST_F(CanvasTest, DoubleClicksBelowTheTitleAndRightPressesAreLeftToTheParent)
{
    Add(kToggle, 100, 100, 40, 40).selected = 1;
    for (const int y : {41, 40}) {  // QTest's double click lacks the press that comes first
        Mouse(QEvent::MouseButtonDblClick, {120, y}, Qt::LeftButton, Qt::LeftButton);
        Mouse(QEvent::MouseButtonRelease, {120, y}, Qt::LeftButton, Qt::NoButton);
    }
    Press({300, 300}, {}, Qt::RightButton);
    EXPECT_EQ(parent.Take(WM_OSC_PROPERTIES).size(), 1u);
    EXPECT_EQ(parent.Take(WM_OSC_CONTEXTMENU).size(), 1u);
    EXPECT_EQ(SelectedNames(), Names{"c"}) << "a right press selects nothing";
}

TEST_F(CanvasTest, ScrollBarsStepByLinesAndPagesAndStopAtTheEnds)
{
    SetClientSize(400, 300);  // the page is 1024 by 768
    EXPECT_EQ(view->scrollXMax, 624);
    QScrollBar* bar = view->HorizontalBar();
    PaintedRegions painted(view);
    painted.Collect();  // what the new size repaints
    bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(view->scrollX, 16);
    EXPECT_EQ(painted.Collect() & QRect(0, 0, 400, 300), QRegion(384, 0, 16, 300))
        << "of the page only the uncovered strip repaints";
    bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_EQ(view->scrollX, 416);
    bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_EQ(view->scrollX, 624);
    EXPECT_EQ(bar->value(), 624);
    bar->triggerAction(QAbstractSlider::SliderSingleStepSub);
    EXPECT_EQ(view->scrollX, 608);
    view->VerticalBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_EQ(view->scrollY, 300);

    Add(kPushButton, 700, 400, 40, 40).selected = 1;
    SetClientSize(600, 500);  // grown: the positions come back inside the new ranges
    EXPECT_EQ((CPoint{view->scrollX, view->scrollY}), (CPoint{424, 268}));
    CRect r;
    view->CreateControlRect(project.pages[0]->controls[0].get(), r);
    EXPECT_EQ(Json(r), json({276, 132, 316, 172}));
    // A screen counts as fitting across when it is no more than a scroll bar
    // wider than the client, and down when no more than a large icon higher.
    const int acrossMargin = view->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int downMargin = view->style()->pixelMetric(QStyle::PM_LargeIconSize);
    ASSERT_GT(downMargin, acrossMargin);
    SetClientSize(1024 - acrossMargin - 1, 768 - downMargin);
    EXPECT_EQ((CPoint{view->scrollX, view->scrollY}), (CPoint{acrossMargin + 1, 0}));
    SetClientSize(1100, 800);
    EXPECT_EQ((CPoint{view->scrollX, view->scrollY}), (CPoint{0, 0}));
    EXPECT_FALSE(bar->isEnabled());
}

}  // namespace
