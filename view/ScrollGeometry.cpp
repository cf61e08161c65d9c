#include "ScrollGeometry.h"

std::optional<int> ScrollStep(int code, int thumb, int position, int max, int page)
{
    switch (code) {
        case kLineForward:
            if (position >= max)
                return std::nullopt;
            return position + kScrollLine > max ? max - position : kScrollLine;
        case kPageForward:
            return position + page > max ? max - position : page;
        case kLineBack:
            if (position == 0)
                return std::nullopt;
            return position - kScrollLine < 0 ? -position : -kScrollLine;
        case kPageBack:
            return position - page < 0 ? -position : -page;
        case kThumbPosition:
        case kThumbTrack:
            return thumb - position;
        default:
            return 0;
    }
}

ScrollAxis FitScrollAxis(std::int16_t position, int screen, int client, int margin)
{
    const auto excess = static_cast<std::int16_t>(screen - client);
    ScrollAxis axis{position, excess > 0 ? excess : std::int16_t{0}, 0};
    if (client < screen - margin) {
        if (axis.position > axis.max) {
            axis.shift = axis.max - axis.position;
            axis.position = axis.max;
        }
    } else if (axis.position != 0) {
        axis.shift = -axis.position;
        axis.position = 0;
    }
    return axis;
}
