#include "CanvasFixture.h"

#include "tests/support/TestControls.h"
#include "view/ArialFont.h"
#include "view/MessageEvent.h"
#include "view/QtWindowHandle.h"

#include <QApplication>
#include <QMouseEvent>

json CanvasCases(const char* key)
{
    json cases = Cases(DATA_DIR "/canvas.json", key);
    if (cases.empty())
        throw std::runtime_error(std::string("no cases of ") + key);
    return cases;
}

json Json(const CRect& r)
{
    return {r.left, r.top, r.right, r.bottom};
}

CRect RectOf(const json& ltrb)
{
    return {ltrb[0], ltrb[1], ltrb[2], ltrb[3]};
}

std::vector<RecordingWindow::Received> RecordingWindow::Take(unsigned message)
{
    QCoreApplication::sendPostedEvents();
    std::vector<Received> taken;
    std::erase_if(received, [&](Received& r) {
        if (r.message != message)
            return false;
        taken.push_back(std::move(r));
        return true;
    });
    return taken;
}

bool RecordingWindow::event(QEvent* event)
{
    MessageEvent* message = MessageEvent::From(event);
    if (message == nullptr)
        return QWidget::event(event);
    Received r{message->Message(), message->wParam, {}, {}};
    if (message->Message() == WM_OSC_HOSTREQUEST && message->wParam == 0) {
        const auto* record = reinterpret_cast<const StatusRecord*>(message->lParam);
        EXPECT_EQ(record->words[0], kStatusRecordKind);
        r.text = reinterpret_cast<const char*>(record->words[kStatusTextWord]);
    }
    if (auto components = message->TakeComponents())
        r.components = *components;
    received.push_back(std::move(r));
    return true;
}

CanvasTest::CanvasTest() : view(new TVornOSCView(project, &parent))
{
    project.pages[0]->controls.clear();
    host.hostWindow = HandleOf(&hostWindow);
    view->host = &host;
    SetClientSize(1024, 768);
    parent.show();
}

OSCControl& CanvasTest::Add(ControlType type, int x, int y, int w, int h, const char* name)
{
    return AddControl(*project.pages[0], x, y, w, h, type, false, name);
}

void CanvasTest::SetClientSize(int w, int h)
{
    const CRect client = view->ClientRect();
    view->resize(w + view->width() - client.Width(), h + view->height() - client.Height());
    parent.resize(view->size());
}

std::vector<std::string> CanvasTest::SelectedNames() const
{
    std::vector<std::string> names;
    for (const auto& c : project.pages[0]->controls) {
        if (c->selected)
            names.emplace_back(c->name);
    }
    return names;
}

void CanvasTest::Mouse(QEvent::Type type, QPoint p, Qt::MouseButton button, Qt::MouseButtons held,
                       Qt::KeyboardModifiers modifiers)
{
    QMouseEvent event(type, QPointF(p), view->mapToGlobal(QPointF(p)), button, held, modifiers);
    QCoreApplication::sendEvent(view, &event);
}

void CanvasTest::Press(QPoint p, Qt::KeyboardModifiers modifiers, Qt::MouseButton button)
{
    Mouse(QEvent::MouseButtonPress, p, button, button, modifiers);
}

void CanvasTest::Move(QPoint p, Qt::MouseButtons held)
{
    Mouse(QEvent::MouseMove, p, Qt::NoButton, held);
}

void CanvasTest::Release(QPoint p, Qt::KeyboardModifiers modifiers)
{
    Mouse(QEvent::MouseButtonRelease, p, Qt::LeftButton, Qt::NoButton, modifiers);
}

void CanvasTest::Drag(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers)
{
    Press(from, modifiers);
    Move(to);
    Release(to, modifiers);
}

QImage CanvasTest::Paint()
{
    const CRect client = view->ClientRect();
    QImage image(client.Width(), client.Height(), QImage::Format_RGB32);
    view->render(&image, QPoint(), QRegion(0, 0, client.Width(), client.Height()));
    return image;
}

namespace {

// The offscreen platform cannot grab the mouse for a whole window; the
// widget's own grab, which the canvas relies on, works all the same.
QtMessageHandler standardHandler = nullptr;
void QuietAboutWindowGrabs(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (!text.contains(QStringLiteral("does not support grabbing")))
        standardHandler(type, context, text);
}

}  // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    standardHandler = qInstallMessageHandler(QuietAboutWindowGrabs);
    QApplication application(argc, argv);
    CreateArialFont();
    ::testing::InitGoogleTest(&argc, argv);
    const int result = RUN_ALL_TESTS();
    DestroyArialFont();
    return result;
}
