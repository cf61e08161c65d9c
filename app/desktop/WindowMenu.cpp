#include "WindowMenu.h"

#include "EditorFrame.h"
#include "FramePlaces.h"

#include <QMdiArea>

WindowMenu::WindowMenu(QMdiArea& area, QWidget* parent)
    : QMenu(QStringLiteral("&Window"), parent), area_(area)
{
    addAction(QStringLiteral("&Tile"), this, &WindowMenu::Tile);
    addAction(QStringLiteral("&Cascade"), this, &WindowMenu::Cascade);
    addSeparator();
    addAction(QStringLiteral("&Next Layout"), QKeySequence(Qt::CTRL | Qt::Key_Tab), &area_,
              &QMdiArea::activateNextSubWindow);
    addAction(QStringLiteral("&Previous Layout"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab),
              &area_, &QMdiArea::activatePreviousSubWindow);
    addSeparator();
    connect(this, &QMenu::aboutToShow, this, &WindowMenu::ListLayouts);
}

void WindowMenu::Cascade()
{
    // Each frame two thirds of the work area, the top one last, every title showing.
    int index = 0;
    for (QMdiSubWindow* window : area_.subWindowList(QMdiArea::StackingOrder)) {
        auto* frame = qobject_cast<EditorFrame*>(window);
        if (frame == nullptr)
            continue;
        frame->showNormal();
        frame->setGeometry(CascadePlace(area_.viewport()->rect(), index++, frame->TitleHeight()));
        frame->raise();
    }
}

void WindowMenu::Tile()
{
    // Row by row, the top one last, so that every title bar starts showing.
    QList<EditorFrame*> frames;
    for (QMdiSubWindow* window : area_.subWindowList(QMdiArea::StackingOrder)) {
        if (auto* frame = qobject_cast<EditorFrame*>(window))
            frames.append(frame);
    }
    for (int index = 0; index < frames.size(); ++index) {
        EditorFrame* frame = frames[index];
        frame->showNormal();
        frame->setGeometry(
            TilePlace(area_.viewport()->rect(), index, static_cast<int>(frames.size())));
        frame->raise();
    }
}

void WindowMenu::ListLayouts()
{
    for (QAction* item : std::exchange(listed_, {}))
        delete item;
    int number = 0;
    for (QMdiSubWindow* window : area_.subWindowList()) {
        auto* frame = qobject_cast<EditorFrame*>(window);
        if (frame == nullptr)
            continue;
        const QString title = frame->ShownTitle().replace(QLatin1Char('&'), QStringLiteral("&&"));
        QAction* item = addAction(QStringLiteral("&%1 %2").arg(++number).arg(title), &area_,
                                  [this, frame] { area_.setActiveSubWindow(frame); });
        item->setCheckable(true);
        item->setChecked(frame == area_.activeSubWindow());
        listed_.append(item);
    }
}
