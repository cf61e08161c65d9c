#include "PreviewPanel.h"

#include "PhonePreview.h"
#include "QrCode.h"

#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPixmap>
#include <QVBoxLayout>

namespace {

constexpr int kModulePixels = 4;

}  // namespace

PreviewPanel::PreviewPanel(const PhonePreview& preview, QWidget* parent)
    : QWidget(parent),
      preview_(preview),
      address_(new QLabel(this)),
      code_(new QLabel(this)),
      browsers_(new QListWidget(this))
{
    address_->setObjectName(QStringLiteral("address"));
    address_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    address_->setWordWrap(true);
    code_->setObjectName(QStringLiteral("code"));
    code_->setAlignment(Qt::AlignCenter);
    browsers_->setObjectName(QStringLiteral("browsers"));
    auto* column = new QVBoxLayout(this);
    column->addWidget(address_);
    column->addWidget(code_);
    column->addWidget(new QLabel(tr("Browsers showing it:"), this));
    column->addWidget(browsers_, 1);
    Refresh();
}

void PreviewPanel::Refresh()
{
    const QString& address = preview_.Address();
    if (address.isEmpty()) {
        address_->setText(
            tr("The phone preview is off: turn it on under Settings > Phone "
               "Preview."));
        code_->clear();
    } else {
        address_->setText(
            tr("Open on a phone or tablet on this network, or scan the code:\n%1").arg(address));
        code_->setPixmap(QPixmap::fromImage(QrCodeImage(address, kModulePixels)));
    }
    browsers_->clear();
    for (const PreviewServer::Browser& browser : preview_.Browsers()) {
        QString item = browser.address;
        if (!browser.agent.isEmpty())
            item += QStringLiteral(", ") + browser.agent;
        if (browser.dropped > 0)
            item += (browser.dropped == 1 ? tr("; %1 message dropped (over %2 a second)")
                                          : tr("; %1 messages dropped (over %2 a second)"))
                        .arg(QLocale().toString(browser.dropped),
                             QLocale().toString(PreviewServer::kMostMessagesPerSecond));
        browsers_->addItem(item);
    }
}
