#pragma once

#include <QImage>

class QString;

// text as a QR code, black on white, each module a square of moduleSize
// pixels, with the four-module quiet zone a reader needs around it. A null
// image when the text is too long for a code.
QImage QrCodeImage(const QString& text, int moduleSize);
