#include "windows/DocumentFiles.h"

#include "document/DocumentContext.h"
#include "windows/DocumentWindow.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

#include <algorithm>

DocumentFiles::DocumentFiles(DocumentWindow &window, std::shared_ptr<DocumentSession> session, HostActions &actions)
    : m_window(window)
    , m_session(std::move(session))
    , m_actions(actions)
{ }

DocumentFiles::~DocumentFiles() = default;

bool DocumentFiles::save()
{
    return m_session->path().isEmpty() ? saveAs() : saveTo(m_session->path());
}

bool DocumentFiles::saveAs()
{
    const auto proposal = m_session->path().isEmpty()
        ? QDir::home().filePath(m_session->title() + QStringLiteral(".json"))
        : m_session->path();
    QFileDialog dialog(&m_window, tr("Save Document"), proposal, tr("Documents (*.json)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("json"));
    dialog.selectFile(proposal);
    return dialog.exec() == QDialog::Accepted && saveTo(dialog.selectedFiles().value(0));
}

bool DocumentFiles::isOpenElsewhere(const QString &path) const
{
    const auto &windows = m_window.services().documents;
    return std::any_of(windows.begin(), windows.end(),
        [&](DocumentWindow *window) { return window != &m_window && window->session().isFile(path); });
}

bool DocumentFiles::saveTo(const QString &path)
{
    std::optional<KRError> error;
    if (isOpenElsewhere(path)) {
        error = KRError{{}, 0,
            tr("“%1” is open in another window. Close that window first, or choose another name.")
                .arg(QFileInfo(path).fileName())};
    } else {
        auto context = contextWithDocument({{QStringLiteral("path"), path}}, m_session->document());
        m_actions.during(QStringLiteral("SaveDocument"), context, [&] {
            error = m_session->save(path);
            return QVariantMap{{QStringLiteral("saved"), !error}};
        });
    }
    if (error)
        showError(&m_window, tr("The document was not saved."), *error);
    else
        emit saved(m_session->path());
    return !error;
}

bool DocumentFiles::mayClose()
{
    if (!m_session->isModified())
        return true;
    QMessageBox box(QMessageBox::Warning, {}, tr("Save the changes to “%1”?").arg(m_session->title()),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, &m_window);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(tr("They are lost otherwise."));
    box.setDefaultButton(QMessageBox::Save);
    box.setWindowModality(Qt::WindowModal);
    switch (box.exec()) {
    case QMessageBox::Save:
        return save();
    case QMessageBox::Discard:
        return true;
    default:
        return false;
    }
}

void showError(QWidget *window, const QString &title, const KRError &error)
{
    QMessageBox box(QMessageBox::Warning, {}, title, QMessageBox::Ok, window);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(error.localizedDescription);
    box.exec();
}
