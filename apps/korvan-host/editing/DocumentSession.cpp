#include "editing/DocumentSession.h"

#include "document/DocumentFile.h"
#include "hosting/WholePath.h"

#include <QCoreApplication>
#include <QFileInfo>

DocumentSession::DocumentSession()
    : DocumentSession(std::make_shared<Document>(QVariantMap{
                          {QStringLiteral("name"), QCoreApplication::translate("DocumentSession", "Untitled")}}),
        {})
{ }

DocumentSession::DocumentSession(std::shared_ptr<Document> document, const QString &path)
    : m_document(std::move(document))
    , m_undo(m_document)
    , m_path(path)
{ }

DocumentSession::~DocumentSession() = default;

Result<std::shared_ptr<DocumentSession>> DocumentSession::open(const QString &path)
{
    const auto absolute = QFileInfo(path).absoluteFilePath();
    auto document = readDocument(absolute);
    if (!document)
        return document.error();
    return std::make_shared<DocumentSession>(std::move(document).value(), absolute);
}

std::optional<KRError> DocumentSession::save(const QString &path)
{
    const auto absolute = QFileInfo(path).absoluteFilePath();
    if (auto error = writeDocument(*m_document, absolute))
        return error;
    m_path = absolute;
    m_undo.markSaved();
    return std::nullopt;
}

bool DocumentSession::isFile(const QString &path) const
{
    return !m_path.isEmpty() && wholePath(m_path) == wholePath(path);
}

QString DocumentSession::title() const
{
    return m_path.isEmpty() ? m_document->name() : QFileInfo(m_path).completeBaseName();
}
