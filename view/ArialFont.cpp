#include "ArialFont.h"

#include <QFontMetricsF>

#include <cmath>

QFont* ArialFont = nullptr;

void CreateArialFont()
{
    if (ArialFont == nullptr)
        ArialFont = new QFont(MakeFont("Arial", -12, 500));
}

void DestroyArialFont()
{
    delete ArialFont;
    ArialFont = nullptr;
}

QFont MakeFont(const char* face, int height, int weight)
{
    QFont font(QString::fromLatin1(face));
    font.setWeight(static_cast<QFont::Weight>(weight));
    if (height < 0) {
        font.setPixelSize(-height);
        return font;
    }
    font.setPixelSize(height);
    const QFontMetricsF metrics(font);
    const qreal cell = metrics.ascent() + metrics.descent();
    if (cell > 0)
        font.setPixelSize(std::max(1, static_cast<int>(std::lround(height * height / cell))));
    return font;
}
