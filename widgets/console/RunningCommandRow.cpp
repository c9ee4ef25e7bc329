#include "widgets/console/RunningCommandRow.h"

#include "localization/Localizable.h"
#include "widgets/PluginText.h"
#include "widgets/Symbols.h"
#include "widgets/ToneLabel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

QString ageText(std::chrono::milliseconds age)
{
    constexpr int minute = 60;
    const auto seconds = qint64(age.count() / 1000);
    const auto twoDigits = [](qint64 number) { return QStringLiteral("%1").arg(number, 2, 10, QChar(u'0')); };
    const auto hours = seconds / (minute * minute);
    const auto minutes = seconds / minute % minute;
    if (hours == 0)
        return QStringLiteral("%1:%2").arg(QString::number(minutes), twoDigits(seconds % minute));
    return QStringLiteral("%1:%2:%3").arg(QString::number(hours), twoDigits(minutes), twoDigits(seconds % minute));
}

RunningCommandRow::RunningCommandRow(const RunningCommand &command, QWidget *parent)
    : QWidget(parent)
    , m_specifier(command.specifier)
    , m_age(new ToneLabel(Tone::Quiet))
{
    constexpr qsizetype longest = 60;
    auto name = plainLine(command.name, longest);
    if (name.isEmpty())
        name = plainLine(command.specifier.stringValue().value_or(QString()), longest);
    const auto plugin = plainLine(command.pluginName, longest);
    auto *const label = new QLabel(plugin.isEmpty() ? name : QStringLiteral("%1  ·  %2").arg(name, plugin));
    label->setTextFormat(Qt::PlainText);
    label->setObjectName(QStringLiteral("RunningCommandName"));
    m_age->setObjectName(QStringLiteral("RunningCommandAge"));
    auto *const stop = new QPushButton(symbolIcon(Symbol::Stop), Localizable::tr("Stop"));
    stop->setObjectName(QStringLiteral("StopButton"));
    stop->setAccessibleName(Localizable::tr("Stop “%1”").arg(name));
    auto *const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label, 1);
    layout->addWidget(m_age);
    layout->addWidget(stop);
    connect(stop, &QPushButton::clicked, this, &RunningCommandRow::stopRequested);
    setAge(command.age);
}

void RunningCommandRow::setAge(std::chrono::milliseconds age)
{
    m_age->setText(ageText(age));
}
