#include "widgets/MessageBoxAlerts.h"

#include "widgets/PlainText.h"

#include <QMessageBox>

MessageBoxAlerts::MessageBoxAlerts(QWidget *window)
    : m_window(window)
{ }

MessageBoxAlerts::~MessageBoxAlerts() = default;

void MessageBoxAlerts::runModal(const Alert &alert)
{
    // On the heap, and watched: the window takes its boxes with it when it goes while one of them is shown.
    const QPointer<QMessageBox> box = new QMessageBox(m_window);
    box->setIcon(messageBoxIcon(alert.style));
    box->setTextFormat(Qt::PlainText);
    box->setText(alert.messageText);
    box->setInformativeText(alert.informativeText);
    showAsPlainText(*box);
    box->setStandardButtons(QMessageBox::Ok);
    box->setDefaultButton(QMessageBox::Ok);
    box->exec();
    delete box;
}
