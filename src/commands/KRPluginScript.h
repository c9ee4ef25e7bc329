#pragma once

#include "platform/Export.h"
#include "platform/KRError.h"
#include "platform/script/SourceOffset.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <memory>
#include <optional>

/// The source text of one script file, or a source given as text. Commands of one plug-in share one for each file.
/// Held by shared pointers. Main thread only.
class KORVAN_EXPORT KRPluginScript
{
public:
    /// `initWithString:filename:`. A source given as text; a nil text stays nil.
    KRPluginScript(const std::optional<QString> &script, const QString &filename);
    virtual ~KRPluginScript();
    KRPluginScript(const KRPluginScript &) = delete;
    KRPluginScript &operator=(const KRPluginScript &) = delete;

    /// `initWithURL:error:`. Reads the file (UTF-8). Null with `error` set when it cannot be read or is not UTF-8.
    static std::shared_ptr<KRPluginScript> initWithURL(const QUrl &url, KRError *error = nullptr);
    /// As initWithURL, for a path in bytes.
    static std::shared_ptr<KRPluginScript> initWithPath(const QByteArray &path, KRError *error);

    /// The file that the source was read from; empty for a script made from a text.
    QUrl URL() const;
    /// The file's last path component, or the name given with the text.
    QString filename() const;
    /// The source; nil after a reload that failed.
    virtual std::optional<QString> script() const;
    /// script() in UTF-8; of a file, every byte as it stood there. Null where script() is nil.
    virtual QByteArray scriptBytes() const { return m_source; }

    /// Where in script() the author's own text begins.
    virtual SourceOffset sourceOffset() const { return {}; }

    /// Reads the file again. False when that fails: the source is nil then, and `error` is set.
    bool loadWithError(KRError *error = nullptr);
    /// Reads the file again, whatever comes of it. Does nothing for a script made from a text.
    void reload();

protected:
    /// From a file that loadWithError() reads.
    explicit KRPluginScript(const QByteArray &path);

    std::optional<QString> rawText() const;

private:
    /// Empty for a script made from a text.
    QByteArray m_path;
    mutable QUrl m_url;
    QString m_filename;
    /// UTF-8 as it stands on disk; null when there is none. It becomes text when somebody asks for it.
    QByteArray m_source;
};
