#pragma once

#include "commands/KRPluginScript.h"

/// A script given as bare statements: they are wrapped into the function "onRun", in which doc, selection and korvan
/// are at hand. Main thread only.
class KORVAN_EXPORT KRPluginStandaloneScript : public KRPluginScript
{
public:
    /// `initWithString:filename:`.
    using KRPluginScript::KRPluginScript;

    /// `initWithURL:error:`. Null with `error` set when the file cannot be read or is not UTF-8.
    static std::shared_ptr<KRPluginStandaloneScript> initWithURL(const QUrl &url, KRError *error = nullptr);

    /// The wrapped source; nil while there is none. Built once: a later reload changes rawScript(), not this.
    std::optional<QString> script() const override;
    QByteArray scriptBytes() const override;
    /// The statements as given.
    std::optional<QString> rawScript() const { return rawText(); }
    SourceOffset sourceOffset() const override;
    /// Always "onRun".
    QString handler() const;

    /// A function of the name `handler` around the body.
    static QString wrappedScript(const QString &body, const QString &handler);

protected:
    /// From a file that loadWithError() reads.
    explicit KRPluginStandaloneScript(const QByteArray &path);

    /// How the body becomes a function; wrappedScript() unless a subclass knows better.
    virtual QString wrap(const QString &body, const QString &handler) const;

private:
    mutable std::optional<QString> m_wrappedScript;
};
