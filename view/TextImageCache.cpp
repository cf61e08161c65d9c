#include "TextImageCache.h"

#include <QFontMetrics>
#include <QPainter>

namespace {

// Antialiased glyphs may reach a little past their bounding box.
constexpr int kBleed = 2;

}  // namespace

size_t qHash(const TextImageCache::Key& key, size_t seed)
{
    return qHashMulti(seed, key.text, key.family, key.pixelSize, key.weight, key.color, key.flags,
                      key.box.width(), key.box.height(), key.pixelRatio);
}

const TextImageCache::Drawn& TextImageCache::Get(const QString& text, const QFont& font,
                                                 const QColor& color, QSize box, int flags,
                                                 qreal pixelRatio)
{
    // The canvas makes its fonts from face, pixel size and weight alone.
    const Key key{text,  font.family(), font.pixelSize(), font.weight(), color.rgba(),
                  flags, box,           pixelRatio};
    const auto found = drawn_.constFind(key);
    if (found != drawn_.constEnd())
        return *found;

    const QRect layoutBox(QPoint(0, 0), box);
    const QRect bounds = QFontMetrics(font)
                             .boundingRect(layoutBox, flags, text)
                             .united(QRect(0, 0, 1, 1))
                             .adjusted(-kBleed, -kBleed, kBleed, kBleed);
    Drawn drawn{QImage(bounds.size() * pixelRatio, QImage::Format_ARGB32_Premultiplied),
                bounds.topLeft()};
    drawn.image.setDevicePixelRatio(pixelRatio);
    drawn.image.fill(Qt::transparent);
    {
        QPainter painter(&drawn.image);
        painter.setRenderHint(QPainter::TextAntialiasing, true);
        painter.setFont(font);
        painter.setPen(color);
        painter.translate(-bounds.topLeft());
        painter.drawText(layoutBox, flags, text);
    }
    if (drawn_.size() >= kMaxEntries)
        drawn_.clear();
    return *drawn_.insert(key, std::move(drawn));
}
