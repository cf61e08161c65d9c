#pragma once

#include <QMdiArea>

#include <functional>

class QMenu;

// The main window's client area, parent of the editors' frames. It makes a
// frame whenever the module asks for one to open an editor in.
class EditorArea : public QMdiArea {
public:
    explicit EditorArea(QWidget* parent = nullptr);

    // Told of the module's menu when the first frame is asked for with it.
    std::function<void(QMenu*)> onModuleMenu;

protected:
    bool event(QEvent* event) override;

private:
    QMenu* moduleMenu_ = nullptr;
};
