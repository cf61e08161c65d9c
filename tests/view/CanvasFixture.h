#pragma once

#include "document/ControlTables.h"
#include "document/OSCProject.h"
#include "host/Messages.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TestFiles.h"
#include "view/ScrollGeometry.h"
#include "view/TVornOSCView.h"

#include <QEvent>
#include <QImage>
#include <QWidget>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using nlohmann::json;

// The cases stored under key in data/canvas.json; none at all fails the test.
json CanvasCases(const char* key);
json Json(const CRect& r);
CRect RectOf(const json& ltrb);

// A window that keeps the numbered messages it receives: the view's parent
// (the editor) and the host's window in the canvas tests.
class RecordingWindow : public QWidget {
public:
    struct Received {
        unsigned message;
        std::intptr_t wParam;
        std::string text;                     // a status record's text
        std::vector<std::string> components;  // a test value's address
    };
    std::vector<Received> received;

    // Takes out what arrived of message, after the posted messages arrived.
    std::vector<Received> Take(unsigned message);

protected:
    bool event(QEvent* event) override;
};

// A view on an iPad page, inside a parent, with a host whose window records.
class CanvasTest : public ::testing::Test {
protected:
    CanvasTest();

    OSCControl& Add(ControlType type, int x, int y, int w, int h, const char* name = "c");
    // Gives the view a client area of w by h pixels.
    void SetClientSize(int w, int h);
    std::vector<std::string> SelectedNames() const;

    // Mouse events in view pixels, with the left button unless told.
    void Press(QPoint p, Qt::KeyboardModifiers modifiers = {},
               Qt::MouseButton button = Qt::LeftButton);
    void Move(QPoint p, Qt::MouseButtons held = Qt::LeftButton);
    void Release(QPoint p, Qt::KeyboardModifiers modifiers = {});
    void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers = {});
    void Mouse(QEvent::Type type, QPoint p, Qt::MouseButton button, Qt::MouseButtons held,
               Qt::KeyboardModifiers modifiers = {});

    // The client area as painted now.
    QImage Paint();

    RecordingWindow parent;
    RecordingWindow hostWindow;
    FakeHost host;
    OSCProject project;
    TVornOSCView* view;
};
