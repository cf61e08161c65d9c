#pragma once

#include <QMenu>

class QMdiArea;

// The Window menu: tile or cascade the layouts' frames, go to the next or
// previous one, or to one chosen from the list of open layouts.
class WindowMenu : public QMenu {
    Q_OBJECT

public:
    WindowMenu(QMdiArea& area, QWidget* parent);

private:
    // Qt's own cascade sizes frames by their hints, which an editor leaves
    // small, and its tiles shrink as layouts open: here each keeps room to work in.
    void Cascade();
    void Tile();
    void ListLayouts();

    QMdiArea& area_;
    QList<QAction*> listed_;
};
