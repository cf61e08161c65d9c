#include "TVornOSCEditor.h"

#include "Accelerators.h"
#include "EditorGeometry.h"
#include "LayoutPath.h"
#include "LayoutState.h"
#include "ModuleEntry.h"
#include "document/LayoutFile.h"
#include "document/ReceivedValues.h"
#include "document/TextField.h"
#include "host/Messages.h"
#include "host/Toolkit.h"
#include "host/VornBasics.h"
#include "view/ArialFont.h"
#include "view/MessageEvent.h"

#include <QDialog>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyle>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

namespace {

// The page list sits in a strip 200 pixels wide, 8 pixels in from its edges.
constexpr int kListMargin = 8;
constexpr int kStripWidth = 200;

constexpr QRgb kBackground = 0x808080;
constexpr QRgb kViewFrameColor = 0x0C0C0C;

constexpr std::size_t kPathBufferBytes = 256;

constexpr std::intptr_t kLeastGridStep = 2;
constexpr std::intptr_t kLargestGridStep = 100;

QString NameOf(const OSCPage& page)
{
    const std::string_view name = TextOf(page.name);
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

int BarExtent(const QWidget& widget)
{
    return widget.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &widget);
}

void CopyToBuffer(std::intptr_t buffer, const std::string& text)
{
    if (buffer != 0)
        std::snprintf(reinterpret_cast<char*>(buffer), kPathBufferBytes, "%s", text.c_str());
}

}  // namespace

TVornOSCEditor::TVornOSCEditor()
    : pageList(this), view(project, this), runDialog([](QDialog& dialog) { return dialog.exec(); })
{
    // Clicks on the canvas or the grey margins give the editor the keyboard,
    // where the arrow keys move and resize the selection.
    setFocusPolicy(Qt::ClickFocus);
    view.setFocusPolicy(Qt::ClickFocus);
    view.setFocusProxy(this);
    // A drag on the canvas is one change, however many moves it takes.
    view.onLeftPress = [this] {
        if (view.testMode == 0)
            BeginStep(nullptr);
    };
    view.onLeftRelease = [this] { EndStep(); };
    connect(&pageList, &QListWidget::itemSelectionChanged, this, [this] {
        OnSelchangePage();
        OnListBoxSelChange();
    });
}

void TVornOSCEditor::Init(QWidget* parent, const char* path)
{
    parentWnd = parent;
    host = AllocVornBasics(HandleOf(parent), 4, 0, nullptr, nullptr);
    view.host = host;
    if (path == nullptr)
        return;
    if (!AcceptablePath(path))
        return;
    CopyTextField(layoutPath, path);
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return;
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    // A foreign file opens as a new layout without a word; a damaged one is
    // reported by the reader and leaves the new layout too.
    ReadLayoutFile(bytes, project, host);
}

bool TVornOSCEditor::AcceptablePath(const std::string& path)
{
    if (path.size() <= kMaxPathBytes)
        return true;
    if (host != nullptr) {
        const std::string message = "The path \"" + path +
                                    "\" is longer than 255 bytes, which the editor cannot keep. "
                                    "Use a shorter folder or file name.";
        host->ShowError(message.c_str());
    }
    return false;
}

void TVornOSCEditor::Create(QWidget* frame, const CRect& rect)
{
    setParent(frame);
    setGeometry(rect.left, rect.top, rect.Width(), rect.Height());
    OnCreate();
    show();
}

void TVornOSCEditor::OnCreate()
{
    pageList.setGeometry(kListMargin, kListMargin, 184, 92);
    if (ArialFont != nullptr)
        pageList.setFont(*ArialFont);
    UpdateListbox();
    view.setGeometry(kStripWidth, 0, 100, 200);
    SetTitle();
    setFocus();
}

void TVornOSCEditor::resizeEvent(QResizeEvent*)
{
    OnSize(0, width(), height());
}

void TVornOSCEditor::OnSize(int, int cx, int cy)
{
    PositionOSCView(cx, cy);
    pageList.setGeometry(kListMargin, kListMargin, kStripWidth - 2 * kListMargin,
                         cy - 2 * kListMargin);
}

void TVornOSCEditor::PositionOSCView(int cx, int cy)
{
    // Zoomed, the view has room for its bars beside the whole page.
    const int bars = view.zoomPercent == 100 ? 0 : BarExtent(view);
    const CRect r = ViewPlacement(cx, cy, view.Zoomed(project.GetScreenW()) + bars,
                                  view.Zoomed(project.GetScreenH()) + bars);
    // The oversized first move makes the view lay out its scroll bars again
    // even when its final size has not changed.
    view.setGeometry(r.left, r.top, r.Width() + 40, r.Height() + 40);
    view.setGeometry(r.left, r.top, r.Width(), r.Height());
    viewFrame = {r.left - 1, r.top - 1, r.right + 1, r.bottom + 1};
}

void TVornOSCEditor::paintEvent(QPaintEvent*)
{
    OnPaint();
}

void TVornOSCEditor::OnPaint()
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(kBackground));
    painter.setPen(QColor(kViewFrameColor));
    painter.setBrush(Qt::NoBrush);
    // A one-pixel pen draws rectangles one pixel wider and taller than asked.
    painter.drawRect(viewFrame.left, viewFrame.top, viewFrame.Width() - 1, viewFrame.Height() - 1);
    painter.setPen(Qt::black);
    painter.drawLine(kStripWidth - 1, 0, kStripWidth - 1, height() - 1);
}

void TVornOSCEditor::SetTitle()
{
    if (host != nullptr && host->QueryTitle(-1) != 0)
        return;
    const SplitPath split = SplitFileName(TextOf(layoutPath));
    const bool neverSaved = std::string_view(layoutPath) == "New";
    const std::string name = neverSaved && !newName.empty() ? newName
                             : split.name.empty()
                                 ? std::string("New")
                                 : std::string(WithoutSuffix(split.name, ".VornOsc"));
    const std::string title = name + " - OSC Editor";
    toolkit::SendMessage(HandleOf(parentWidget()), WM_OSC_SETTITLE, 0,
                         reinterpret_cast<std::intptr_t>(title.c_str()));
}

void TVornOSCEditor::SetCurSel(int index)
{
    // Only the user's choices run the selection handlers.
    const QSignalBlocker quiet(pageList);
    pageList.setCurrentRow(index);
}

int TVornOSCEditor::GetCurSel() const
{
    const QList<QListWidgetItem*> selected = pageList.selectedItems();
    return selected.isEmpty() ? -1 : pageList.row(selected.front());
}

void TVornOSCEditor::UpdateListbox()
{
    {
        const QSignalBlocker quiet(pageList);
        pageList.clear();
        for (const auto& page : project.pages)
            pageList.addItem(NameOf(*page));
    }
    SetCurSel(project.currentPage);
}

void TVornOSCEditor::OnSelchangePage()
{
    const int selected = GetCurSel();
    if (selected >= 0 && selected < static_cast<int>(project.pages.size()))
        project.currentPage = selected;
    view.update();
}

void TVornOSCEditor::OnListBoxSelChange()
{
    const int selected = GetCurSel();
    if (selected < 0)
        SetCurSel(project.currentPage);
    else if (selected < static_cast<int>(project.pages.size()))
        project.currentPage = selected;
}

void TVornOSCEditor::OnOsceditorAddpage()
{
    if (OSCPage* page = project.AddPage()) {
        const std::string name = "Page " + std::to_string(project.pages.size());
        CopyTextField(page->name, name);
    }
    modified = 1;
    // Only the new tail joins the list.
    for (int i = pageList.count(); i < static_cast<int>(project.pages.size()); ++i) {
        const QSignalBlocker quiet(pageList);
        pageList.addItem(NameOf(*project.pages[static_cast<std::size_t>(i)]));
    }
    SetCurSel(project.currentPage);
    view.update();
}

void TVornOSCEditor::OnOsceditorRemovepage()
{
    project.RemovePage();
    // Marked even when the user kept the page.
    modified = 1;
    UpdateListbox();
    view.update();
}

bool TVornOSCEditor::event(QEvent* event)
{
    if (MessageEvent* message = MessageEvent::From(event)) {
        message->result = WindowProc(message->Message(), message->wParam, message->lParam);
        return true;
    }
    if (event->type() == QEvent::ShortcutOverride && hMenu != nullptr) {
        // A shortcut of the menu may fire next: its items must know the rules.
        OnInitMenuPopup(hMenu, 0, false);
    } else if (event->type() == QEvent::KeyPress && hasFocus() && hAccel != nullptr) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (const int command = TranslateAccelerator(hAccel, key)) {
            OnCommand(command);
            return true;
        }
        if (const int command = TranslateGridMove(key)) {
            OnCommand(command);
            return true;
        }
    }
    return QWidget::event(event);
}

std::intptr_t TVornOSCEditor::WindowProc(unsigned message, std::intptr_t wParam,
                                         std::intptr_t lParam)
{
    switch (message) {
        case WM_OSC_HOSTREQUEST:
            return lParam != 0 ? OnHostRequest(reinterpret_cast<HostRequest*>(lParam)->words) : 0;
        case WM_OSC_SETTITLE:
            // The canvas reports a mouse edit; a host re-marks a layout it kept open.
            modified = 1;
            return 0;
        case WM_OSC_CANCLOSE:
            return CanClose();
        case WM_OSC_PROPERTIES:
            RunStep("Properties", &TVornOSCEditor::OnOsceditorProperties);
            return 0;
        case WM_OSC_CONTEXTMENU:
            RMBMenu();
            return 0;
        case WM_COMMAND:
            return OnCommand(static_cast<int>(wParam & 0xFFFF)) ? 1 : 0;
        case WM_INITMENUPOPUP:
            if (wParam != 0)
                OnInitMenuPopup(reinterpret_cast<QMenu*>(wParam), static_cast<int>(lParam & 0xFFFF),
                                lParam > 0xFFFF);
            return 1;
        default:
            return 0;
    }
}

std::intptr_t TVornOSCEditor::OnHostRequest(std::intptr_t* words)
{
    switch (words[0]) {
        case kRequestHelpTopic:
            return kHelpTopic;
        case kRequestSetTitle:
            SetTitle();
            return 0;
        case kRequestSplitPath: {
            const SplitPath split = SplitFileName(TextOf(layoutPath));
            CopyToBuffer(words[kRequestFolderWord], split.folder);
            CopyToBuffer(words[kRequestNameWord], split.name);
            return 0;
        }
        case kRequestIsModified:
            return modified;
        case kRequestWriteCopy:
            return WriteCopy(reinterpret_cast<const char*>(words[kRequestCopyPathWord])) ? 1 : 0;
        case kRequestBecomeNew:
            CopyTextField(layoutPath, "New");
            newName = reinterpret_cast<const char*>(words[kRequestNewNameWord]);
            history.MarkNeverSaved();
            modified = 1;
            SetTitle();
            return 0;
        case kRequestBecomeChangedAt: {
            const auto* path = reinterpret_cast<const char*>(words[kRequestOwnPathWord]);
            if (path == nullptr || !AcceptablePath(path))
                return 0;
            CopyTextField(layoutPath, path);
            newName.clear();
            history.MarkNeverSaved();
            modified = 1;
            SetTitle();
            return 1;
        }
        case kRequestDevice:
            return project.device;
        case kRequestSetValues: {
            const auto* address = reinterpret_cast<const char*>(words[kRequestAddressWord]);
            const auto* value = reinterpret_cast<const ReceivedValue*>(words[kRequestValueWord]);
            if (address == nullptr || value == nullptr)
                return 0;
            const ValuesSet set = SetValuesAt(project, address, *value);
            if (set.onCurrentPage)
                view.update();
            return set.controls;
        }
        case kRequestLayoutState: {
            const ValuesSet set = AnswerLayoutState(project, words);
            if (set.onCurrentPage)
                view.update();
            return set.controls;
        }
        case kRequestZoom:
            return view.zoomPercent;
        case kRequestGridStep: {
            const std::intptr_t step = words[kRequestGridStepWord];
            if (step >= kLeastGridStep && step <= kLargestGridStep) {
                TVornOSCView::gridStep = static_cast<int>(step);
                view.update();
            }
            return TVornOSCView::gridStep;
        }
        case kRequestSetDevice:
            // The host restores what the layout file cannot keep: no change of the user's.
            project.device = words[kRequestDeviceWord] != 0 ? 1 : 0;
            FitViewToScreen();
            return 0;
        case kRequestSave:
            // Saves even a layout never saved, under the name New.
            if (layoutPath[0] != '\0')
                OnFileSave();
            return 0;
        default:
            return 0;
    }
}

void TVornOSCEditor::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton)
        OnRButtonDown(0, {event->position().toPoint().x(), event->position().toPoint().y()});
    QWidget::mousePressEvent(event);
}

void TVornOSCEditor::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        OnLButtonDblClk(0, {event->position().toPoint().x(), event->position().toPoint().y()});
    QWidget::mouseDoubleClickEvent(event);
}

void TVornOSCEditor::OnRButtonDown(unsigned, CPoint)
{
    RMBMenu();
}

void TVornOSCEditor::OnLButtonDblClk(unsigned, CPoint)
{
    RunStep("Page Properties", &TVornOSCEditor::OnOsceditorPageproperties);
}
