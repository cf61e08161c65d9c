#include "QrCode.h"

#include <QPainter>
#include <QString>

#include <qrencode.h>

#include <memory>

namespace {

constexpr int kQuietZone = 4;

}  // namespace

QImage QrCodeImage(const QString& text, int moduleSize)
{
    const QByteArray bytes = text.toUtf8();
    const std::unique_ptr<QRcode, decltype(&QRcode_free)> code(
        QRcode_encodeString8bit(bytes.constData(), 0, QR_ECLEVEL_M), &QRcode_free);
    if (!code)
        return {};
    const int side = (code->width + 2 * kQuietZone) * moduleSize;
    QImage image(side, side, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    for (int row = 0; row < code->width; ++row) {
        for (int column = 0; column < code->width; ++column) {
            // The low bit of each module says whether it is dark.
            if (code->data[row * code->width + column] & 1)
                painter.fillRect((column + kQuietZone) * moduleSize,
                                 (row + kQuietZone) * moduleSize, moduleSize, moduleSize,
                                 Qt::black);
        }
    }
    return image;
}
