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
