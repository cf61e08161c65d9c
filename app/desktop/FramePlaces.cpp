#include "FramePlaces.h"

#include <algorithm>

QRect CascadePlace(const QRect& workArea, int index, int step)
{
    const QSize size(workArea.width() * 2 / 3, workArea.height() * 2 / 3);
    step = std::max(step, 1);
    const int places = std::min((workArea.width() - size.width()) / step,
                                (workArea.height() - size.height()) / step) +
                       1;
    const int k = std::max(index, 0) % places;
    return {workArea.topLeft() + QPoint(k * step, k * step), size};
}

namespace {

// The start of the place-th of places frames of the given length spread over span.
int SpreadStart(int span, int length, int place, int places)
{
    return places > 1 ? place * (span - length) / (places - 1) : 0;
}

}  // namespace

QRect TilePlace(const QRect& workArea, int index, int count)
{
    int columns = 1;
    while (columns * columns < count)
        ++columns;
    const int rows = (count + columns - 1) / columns;
    const QSize size(columns > 1 ? workArea.width() * 2 / 3 : workArea.width(),
                     rows > 1 ? workArea.height() * 2 / 3 : workArea.height());
    return {workArea.topLeft() +
                QPoint(SpreadStart(workArea.width(), size.width(), index % columns, columns),
                       SpreadStart(workArea.height(), size.height(), index / columns, rows)),
            size};
}
