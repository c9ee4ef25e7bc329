#pragma once

#include "document/Document.h"
#include "editing/DocumentUndoStack.h"
#include "platform/Result.h"

#include <QString>

/// A document that is open: with its file, if it has one, and its undo.
class DocumentSession
{
public:
    /// A new, empty document.
    DocumentSession();
    /// A document that was read from the file.
    DocumentSession(std::shared_ptr<Document> document, const QString &path);
    ~DocumentSession();

    static Result<std::shared_ptr<DocumentSession>> open(const QString &path);
    /// Nil when the file has the document as it is; else what went wrong, and nothing has changed.
    std::optional<KRError> save(const QString &path);

    const std::shared_ptr<Document> &document() const { return m_document; }
    DocumentUndoStack &undo() { return m_undo; }
    /// Absolute; "" for a document that was never saved.
    const QString &path() const { return m_path; }
    /// Whether that is the document's file, even if the path leads there through links.
    bool isFile(const QString &path) const;
    /// For the user: the file's name, or the document's.
    QString title() const;
    bool isModified() const { return !m_undo.isClean(); }
    /// New and never touched.
    bool isPristine() const { return m_path.isEmpty() && !isModified() && !m_undo.canRedo(); }

private:
    std::shared_ptr<Document> m_document;
    DocumentUndoStack m_undo;
    QString m_path;
};
