#pragma once

#include <QMdiArea>

#include <functional>

class DesktopHost;
class EditorFrame;
class QMenu;

// The main window's client area, parent of the editors' frames. It makes a
// frame whenever the module asks for one to open an editor in.
class EditorArea : public QMdiArea {
public:
    EditorArea(DesktopHost& host, QWidget* parent);

    // Told of the module's menu when the first frame is asked for with it.
    std::function<void(QMenu*)> onModuleMenu;
    // Told of each frame made, before the module puts its editor in it.
    std::function<void(EditorFrame*)> onFrame;

protected:
    bool event(QEvent* event) override;

private:
    DesktopHost& host_;
    QMenu* moduleMenu_ = nullptr;
};
