#include "widgets/plugins/Banner.h"

#include "localization/Localizable.h"
#include "widgets/Symbols.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>

Banner::Banner(Tone tone, Dismissal dismissal, QWidget *parent)
    : QFrame(parent)
    , m_tone(tone)
    , m_text(new QLabel)
    , m_action(new QPushButton)
    , m_close(new QToolButton)
{
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setObjectName(QStringLiteral("BannerText"));
    m_action->setObjectName(QStringLiteral("BannerAction"));
    m_action->hide();
    m_close->setIcon(symbolIcon(Symbol::Close));
    m_close->setAutoRaise(true);
    m_close->setFocusPolicy(Qt::StrongFocus);
    m_close->setObjectName(QStringLiteral("BannerClose"));
    m_close->setAccessibleName(Localizable::tr("Dismiss"));
    m_close->setToolTip(Localizable::tr("Dismiss"));
    m_close->setVisible(dismissal == Dismissal::Offered);
    auto *const layout = new QHBoxLayout(this);
    layout->setContentsMargins(14, 8, 10, 8);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_action);
    layout->addWidget(m_close);
    hide();
    connect(m_action, &QPushButton::clicked, this, &Banner::actionRequested);
    connect(m_close, &QToolButton::clicked, this, [this] {
        hide();
        emit dismissed();
    });
}

void Banner::say(const QString &text)
{
    m_text->setText(text);
    setAccessibleName(text);
    show();
}

void Banner::say(const QString &text, Tone tone)
{
    m_tone = tone;
    update();
    say(text);
}

void Banner::setAction(const QString &text)
{
    m_action->setText(text);
    m_action->show();
}

void Banner::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), toneBackground(m_tone, palette()));
    painter.fillRect(QRect(0, 0, 3, height()), toneColor(m_tone, palette()));
}
