// The canvas's painting: the page as the device will show it, then the
// selection and the feedback of the edit in progress.
#include "ArialFont.h"
#include "ControlGeometry.h"
#include "DeviceContext.h"
#include "TVornOSCView.h"
#include "document/ControlTables.h"
#include "document/OSCProject.h"

#include <QPainter>

#include <vector>

namespace {

constexpr ColorRef kBlack = 0x000000;
constexpr ColorRef kDarkGrey = 0x3F3F3F;
constexpr ColorRef kDarkRed = 0x00007F;
constexpr ColorRef kWhite = 0xFFFFFF;
constexpr ColorRef kYellow = 0x00FFFF;

// Labels and the banner are centred and not wrapped; names wrap at words.
constexpr unsigned kCentredText = kTextCenter | kTextBottom | kTextExpandTabs | kTextNoClip;
constexpr unsigned kWrappedText = kTextBottom | kTextWordBreak | kTextNoClip | kTextExternalLeading;

constexpr int kNameFontHeight = 14;

// Puts back the pen and brush that were selected when it was made.
class KeepPenAndBrush {
public:
    explicit KeepPenAndBrush(DeviceContext& dc)
        : dc_(dc), pen_(dc.CurrentPen()), brush_(dc.CurrentBrush())
    {
    }
    ~KeepPenAndBrush()
    {
        dc_.SelectPen(pen_);
        dc_.SelectBrush(brush_);
    }
    KeepPenAndBrush(const KeepPenAndBrush&) = delete;
    KeepPenAndBrush& operator=(const KeepPenAndBrush&) = delete;

private:
    DeviceContext& dc_;
    QPen pen_;
    QBrush brush_;
};

QBrush Brush(ColorRef color)
{
    return QBrush(ToQColor(color));
}

// Text in the shared font, or in the current one while there is none.
void DrawInArialFont(DeviceContext& dc, const char* text, const CRect& r, unsigned format)
{
    if (ArialFont == nullptr)
        return dc.DrawText(text, r, format);
    const QFont oldFont = dc.SelectFont(*ArialFont);
    dc.DrawText(text, r, format);
    dc.SelectFont(oldFont);
}

}  // namespace

void TVornOSCView::OnPaint(const QRect& invalid)
{
    if (zoomPercent != 100)
        return PaintZoomed(invalid);
    QPainter painter(this);
    PaintPage(painter, invalid);
}

void TVornOSCView::PaintPage(QPainter& painter, const QRect& invalid)
{
    DeviceContext dc(painter, texts_);
    dc.FillRect({invalid.left(), invalid.top(), invalid.right() + 1, invalid.bottom() + 1}, kBlack);

    const CRect strip = TitleStripRect(project.GetScreenW(), scrollX, scrollY);
    {
        KeepPenAndBrush keep(dc);
        dc.SelectBrush(Brush(kDarkGrey));
        dc.SelectPen(SolidPen(1, kDarkGrey));
        dc.RoundRect(strip, roundPt);
    }
    if (testMode) {
        const CRect banner = TestModeBannerRect(strip);
        const QBrush oldBrush = dc.SelectBrush(Brush(kDarkRed));
        dc.RoundRect(banner, roundPt);
        dc.SelectBrush(oldBrush);
        dc.SetTextColor(kWhite);
        DrawInArialFont(dc, "Test Mode", banner, kCentredText);
    }

    if (showGrid)
        PaintGrid(dc, invalid);
    const OSCPage* page = project.CurrentPage();
    if (page == nullptr)
        return;
    const QFont nameFont = MakeFont("Arial", kNameFontHeight, 400);
    // The control with the lowest index is drawn last, on top.
    for (auto it = page->controls.rbegin(); it != page->controls.rend(); ++it) {
        OSCControl* control = it->get();
        if (control == nullptr)
            continue;
        switch (control->type) {
            case kLabel:
                PaintLabel(dc, control);
                break;
            case kFader:
                PaintFader(dc, control);
                break;
            case kKnob:
                PaintKnob(dc, control);
                break;
            case kToggle:
                PaintToggle(dc, control);
                break;
            case kPushButton:
                PaintButton(dc, control);
                break;
            default:  // a type this editor does not know draws nothing
                break;
        }
        CRect r;
        CreateControlRect(control, r);
        if (control->type != kLabel) {
            dc.SetTextColor(kWhite);
            const QFont oldFont = dc.SelectFont(nameFont);
            dc.DrawText(control->name, NameTextRect(r), kWrappedText);
            dc.SelectFont(oldFont);
        }
        if (control->selected)
            dc.FrameRect(r, kWhite);
    }

    if (rubberBanding) {
        CRect band{anchorPoint.x, anchorPoint.y, dragPoint.x, dragPoint.y};
        band.OffsetRect(-scrollX, -scrollY);
        band.NormalizeRect();
        dc.FrameRect(band, kYellow);
    }
    if (movingSelection) {
        std::vector<OSCControl*> selected;
        project.GetSelectedControls(selected);
        for (const OSCControl* control : selected) {
            CRect r = control->Rect();
            r.OffsetRect(dragPoint.x - anchorPoint.x - scrollX,
                         dragPoint.y - anchorPoint.y - scrollY);
            dc.FrameRect(r, kYellow);
        }
    }
}

void TVornOSCView::PaintLabel(DeviceContext& dc, OSCControl* control)
{
    CRect r;
    CreateControlRect(control, r);
    // Outlined by whatever pen is selected: a label selects none.
    const QBrush oldBrush = dc.SelectBrush(Brush(GetScaledColor(control->color, 4)));
    dc.RoundRect(r, roundPt);
    dc.SetTextColor(GetScaledColor(control->color, 1));
    DrawInArialFont(dc, control->name, r, kCentredText);
    dc.SelectBrush(oldBrush);
}

void TVornOSCView::PaintFader(DeviceContext& dc, OSCControl* control)
{
    CRect r;
    CreateControlRect(control, r);
    KeepPenAndBrush keep(dc);
    dc.SelectBrush(Brush(GetScaledColor(control->color, 8)));
    dc.SelectPen(SolidPen(2, GetScaledColor(control->color, 1)));
    dc.RoundRect(r, roundPt);
    dc.SelectBrush(Brush(GetScaledColor(control->color, 1)));
    dc.RoundRect(
        FaderLevelRect(r, control->minValue, control->maxValue, control->value, testMode != 0),
        roundPt);
}

void TVornOSCView::PaintKnob(DeviceContext& dc, OSCControl* control)
{
    CRect r;
    CreateControlRect(control, r);
    const CRect box = KnobBox(r);
    KeepPenAndBrush keep(dc);
    dc.SelectBrush(Brush(GetScaledColor(control->color, 8)));
    dc.SelectPen(SolidPen(2, GetScaledColor(control->color, 1)));
    dc.Ellipse(box);
    dc.SelectBrush(Brush(kBlack));
    dc.SelectPen(SolidPen(1, kBlack));
    dc.Ellipse(KnobHub(box));
    if (testMode) {
        const KnobPointer pointer = KnobPointerLine(*control, scrollX, scrollY);
        dc.SelectPen(SolidPen(2, ColorOf(control->color)));
        dc.Line(pointer.from, pointer.to);
    }
}

void TVornOSCView::PaintToggle(DeviceContext& dc, OSCControl* control)
{
    CRect r;
    CreateControlRect(control, r);
    KeepPenAndBrush keep(dc);
    dc.SelectBrush(Brush(GetScaledColor(control->color, 8)));
    dc.SelectPen(SolidPen(2, GetScaledColor(control->color, 1)));
    dc.RoundRect(r, roundPt);
    // Out of test mode a toggle always looks off.
    if (testMode && control->value == control->maxValue)
        dc.FillRect(ToggleLitRect(r), GetScaledColor(control->color, 1));
}

void TVornOSCView::PaintButton(DeviceContext& dc, OSCControl* control)
{
    CRect r;
    CreateControlRect(control, r);
    KeepPenAndBrush keep(dc);
    const ColorRef half = GetScaledColor(control->color, 2);
    dc.SelectBrush(Brush(half));
    dc.SelectPen(SolidPen(2, half));
    dc.RoundRect(r, roundPt);
}
