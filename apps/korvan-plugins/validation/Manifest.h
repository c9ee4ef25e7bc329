#pragma once

#include "validation/JSONNode.h"
#include "validation/Problem.h"

#include <QList>
#include <QString>

/// A manifest under examination: its values, and what was found to be wrong with it.
class Manifest
{
public:
    /// Of the bundle at that path. `text` is the file's; `root` an object that was read from it.
    Manifest(const QString &bundle, const QString &text, const JSONNode &root);

    const JSONNode &root() const { return m_root; }
    const QString &bundle() const { return m_bundle; }
    QString scriptFolder() const;

    void error(const QString &key, qsizetype offset, const QString &message)
    {
        m_findings.append({Problem::Severity::Error, key, message, offset});
    }
    void warning(const QString &key, qsizetype offset, const QString &message)
    {
        m_findings.append({Problem::Severity::Warning, key, message, offset});
    }
    /// Something that is wrong in another file of the bundle.
    void errorInFile(const QString &key, const QString &file, const TextPosition &position, const QString &message)
    {
        m_problemsOfFiles.append({Problem::Severity::Error, key, message, file, position});
    }

    void warningInFile(const QString &key, const QString &file, const TextPosition &position, const QString &message)
    {
        m_problemsOfFiles.append({Problem::Severity::Warning, key, message, file, position});
    }

    /// So many mistakes that no time is spent on guessing what was meant.
    bool isFullOfMistakes() const { return m_findings.size() >= 100; }

    /// The manifest's own in the order of their places, then those of other files.
    Problems problems() const;

    static QString path(const QString &bundle);
    static QString keyOfElement(const QString &key, qsizetype index)
    {
        return QStringLiteral("%1[%2]").arg(key).arg(index);
    }
    static QString keyOfMember(const QString &key, const QString &member)
    {
        return key.isEmpty() ? member : key + u'.' + member;
    }

private:
    struct Finding
    {
        Problem::Severity severity;
        QString key;
        QString message;
        qsizetype offset;
    };

    QString m_bundle;
    QString m_text;
    const JSONNode &m_root;
    QList<Finding> m_findings;
    Problems m_problemsOfFiles;
};
