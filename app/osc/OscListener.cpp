#include "OscListener.h"

#include "ListenPlace.h"

#include <QHostAddress>
#include <QNetworkDatagram>
#include <QUdpSocket>

OscListener::OscListener(QObject* parent) : QObject(parent) {}

bool OscListener::Apply(const OscInput& input, QString& error)
{
    delete socket_;
    socket_ = nullptr;
    if (!input.on)
        return true;
    const QHostAddress address = ListenAddress(input.host);
    if (address.isNull()) {
        error = tr("OSC input cannot listen on \u201c%1\u201d: it is not an address of this "
                   "computer; choose \u201call\u201d or one of its addresses.")
                    .arg(QString::fromStdString(input.host));
        return false;
    }
    auto* socket = new QUdpSocket(this);
    if (!socket->bind(address, static_cast<quint16>(input.port))) {
        error = tr("OSC input cannot listen on port %1: %2. Choose another port under "
                   "Settings > OSC Input.")
                    .arg(input.port)
                    .arg(socket->errorString());
        delete socket;
        return false;
    }
    socket_ = socket;
    connect(socket_, &QUdpSocket::readyRead, this, &OscListener::ReadDatagrams);
    return true;
}

bool OscListener::IsListening() const
{
    return socket_ != nullptr;
}

int OscListener::Port() const
{
    return socket_ != nullptr ? socket_->localPort() : 0;
}

void OscListener::ReadDatagrams()
{
    while (socket_ != nullptr && socket_->hasPendingDatagrams()) {
        const QByteArray bytes = socket_->receiveDatagram().data();
        const auto messages =
            ReadOscPacket(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                          static_cast<std::size_t>(bytes.size()));
        if (!messages) {
            ++malformed_;
            if (onMalformed)
                onMalformed();
            continue;
        }
        for (const OscMessageIn& message : *messages) {
            ++received_;
            if (onMessage)
                onMessage(message);
        }
    }
}
