#pragma once

#include <QColor>
#include <QFont>
#include <QHash>
#include <QImage>
#include <QRect>
#include <QString>

// Texts as drawn once, kept as pictures to put down again: laying out and
// shaping a name costs far more than copying its pixels, and a page shows the
// same names on every repaint. Each picture is the text exactly as drawText
// lays it out in its rectangle, with everything that spills out of it.
class TextImageCache {
public:
    struct Drawn {
        QImage image;
        QPoint offset;  // of the image from the rectangle's top left
    };

    // pixelRatio is the device's pixels per pixel of the canvas, so that text
    // stays sharp on dense screens.
    const Drawn& Get(const QString& text, const QFont& font, const QColor& color, QSize box,
                     int flags, qreal pixelRatio);

    struct Key {
        QString text;
        QString family;
        int pixelSize;
        int weight;
        QRgb color;
        int flags;
        QSize box;
        qreal pixelRatio;
        friend bool operator==(const Key&, const Key&) = default;
    };

private:
    // Enough for a few crowded pages; past it the cache starts again.
    static constexpr qsizetype kMaxEntries = 4096;
    QHash<Key, Drawn> drawn_;
};

size_t qHash(const TextImageCache::Key& key, size_t seed = 0);
