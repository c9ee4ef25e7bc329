#include "widgets/console/TimeLimitQuestion.h"

#include "localization/Localizable.h"
#include "widgets/PlainText.h"
#include "widgets/PluginText.h"

#include <QApplication>
#include <QEvent>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>

namespace {

/// Notices that the application is to end, which closes every window, the question as well.
class QuitWatch final : public QObject
{
public:
    QuitWatch() { qApp->installEventFilter(this); }

    bool isEnding() const { return m_isEnding; }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_isEnding = m_isEnding || event->type() == QEvent::Quit;
        return false;
    }

private:
    bool m_isEnding = false;
};

} // namespace

TimeLimitQuestion::TimeLimitQuestion(QWidget *window)
    : m_window(window)
{ }

ScriptTimeLimitDecision TimeLimitQuestion::ask(const QString &name, double seconds) const
{
    if (QCoreApplication::closingDown() || !qApp)
        return ScriptTimeLimitDecision::Stop;
    constexpr qsizetype longestName = 100;
    // On the heap, and watched: the window takes its boxes with it when it goes while one of them is shown. Nothing of
    // this object is used after that either.
    const QPointer<QMessageBox> box = new QMessageBox(m_window);
    box->setObjectName(QStringLiteral("TimeLimitQuestion"));
    box->setIcon(QMessageBox::Warning);
    box->setTextFormat(Qt::PlainText);
    box->setText(Localizable::tr("A script has been running for a long time."));
    box->setInformativeText(
        Localizable::tr("“%1” has computed for %2 seconds. Meanwhile the application cannot do anything else.")
            .arg(plainLine(name, longestName), QLocale().toString(seconds, 'g', 3)));
    auto *const stop = box->addButton(Localizable::tr("&Stop"), QMessageBox::DestructiveRole);
    stop->setObjectName(QStringLiteral("StopScript"));
    auto *const goOn = box->addButton(Localizable::tr("&Keep Waiting"), QMessageBox::RejectRole);
    goOn->setObjectName(QStringLiteral("KeepWaiting"));
    box->setDefaultButton(goOn);
    box->setEscapeButton(goOn);
    box->setWindowModality(Qt::ApplicationModal);
    showAsPlainText(*box);
    const QuitWatch quit;
    box->exec();
    const bool mayGoOn = box && !quit.isEnding() && box->clickedButton() == goOn;
    delete box;
    return mayGoOn ? ScriptTimeLimitDecision::GoOn : ScriptTimeLimitDecision::Stop;
}
