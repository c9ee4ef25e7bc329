#include "widgets/plugins/PluginUpdateRow.h"

#include "localization/Localizable.h"
#include "widgets/PluginText.h"
#include "widgets/ToneLabel.h"

#include <QGridLayout>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>

using Phase = PluginUpdateState::Phase;

namespace {

constexpr int wholeBar = 1000;

QString size(double bytes)
{
    return QLocale().formattedDataSize(qint64(bytes), 1, QLocale::DataSizeSIFormat);
}

QString downloadText(const PluginUpdateState &state)
{
    if (state.bytesReceived <= 0)
        return Localizable::tr("Downloading…");
    const auto received = size(double(state.bytesReceived));
    if (state.bytesExpected < 0) {
        //: %1 is what has arrived, with its unit.
        return Localizable::tr("%1 downloaded").arg(received);
    }
    //: %1 is what has arrived, %2 the whole; both with their unit.
    return Localizable::tr("%1 of %2 downloaded").arg(received, size(double(state.bytesExpected)));
}

QString withSpeed(const QString &text, double bytesPerSecond)
{
    if (bytesPerSecond <= 0)
        return text;
    //: %1 says what has arrived, %2 what arrives in a second, with its unit.
    return Localizable::tr("%1, %2 per second").arg(text, size(bytesPerSecond));
}

} // namespace

QString updateText(const PluginUpdateState &state)
{
    switch (state.phase) {
    case Phase::Idle:
        return {};
    case Phase::Checking:
        return Localizable::tr("Looking for an update…");
    case Phase::Available:
        return Localizable::tr("Version %1 is available.").arg(plainLine(state.version));
    case Phase::Waiting:
        return Localizable::tr("Waits for other downloads.");
    case Phase::Downloading:
        return withSpeed(downloadText(state), state.bytesPerSecond);
    case Phase::Installing:
        return Localizable::tr("Installing…");
    case Phase::Failed:
        return plainLines(state.message);
    case Phase::Installed:
        break;
    }
    return Localizable::tr("Updated to version %1.").arg(plainLine(state.version));
}

PluginUpdateRow::PluginUpdateRow(QWidget *parent)
    : QWidget(parent)
    , m_text(new ToneLabel)
    , m_bar(new QProgressBar)
    , m_update(new QPushButton(Localizable::tr("&Update")))
    , m_cancel(new QPushButton(Localizable::tr("&Cancel")))
{
    m_text->setWordWrap(true);
    m_text->setObjectName(QStringLiteral("UpdateText"));
    m_bar->setTextVisible(false);
    m_bar->setMaximumHeight(6);
    m_bar->setAccessibleName(Localizable::tr("Progress of the download"));
    m_update->setObjectName(QStringLiteral("UpdateButton"));
    m_cancel->setObjectName(QStringLiteral("CancelUpdateButton"));
    auto *const layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_text, 0, 0);
    layout->addWidget(m_update, 0, 1, Qt::AlignTop);
    layout->addWidget(m_cancel, 0, 2, Qt::AlignTop);
    layout->addWidget(m_bar, 1, 0, 1, 3);
    layout->setColumnStretch(0, 1);
    connect(m_update, &QPushButton::clicked, this, &PluginUpdateRow::updateRequested);
    connect(m_cancel, &QPushButton::clicked, this, &PluginUpdateRow::cancelRequested);
    setState({});
}

void PluginUpdateRow::setState(const PluginUpdateState &state)
{
    const bool hasFailed = state.phase == Phase::Failed;
    m_text->setText(updateText(state));
    m_text->setTone(hasFailed ? std::optional(Tone::Error) : std::nullopt);
    m_update->setVisible(state.phase == Phase::Available || (hasFailed && !state.version.isEmpty()));
    m_update->setText(hasFailed ? Localizable::tr("&Try Again") : Localizable::tr("&Update"));
    m_cancel->setVisible(state.phase == Phase::Downloading || state.phase == Phase::Waiting);
    m_bar->setVisible(state.isUnderWay());
    const bool isMeasured = state.phase == Phase::Downloading && state.bytesExpected > 0;
    m_bar->setRange(0, isMeasured ? wholeBar : 0);
    if (isMeasured)
        m_bar->setValue(int(double(state.bytesReceived) / double(state.bytesExpected) * wholeBar));
    setVisible(!m_text->text().isEmpty());
}
