#pragma once

#include "widgets/Export.h"

#include "platform/Result.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>

class KRPluginBundle;
class KRPluginManager;
class StagedPlugin;

/// What a new plug-in would take the place of. Texts are the plug-in's own: plain text.
struct PluginReplacement
{
    enum class Kind { Newer, Same, Older };

    QString name;
    QString installedVersion;
    QString newVersion;
    /// The new one, compared with the installed one.
    Kind kind = Kind::Newer;
};

/// How the installation of a file has ended.
struct PluginInstallOutcome
{
    enum class Kind {
        Installed,
        /// The user keeps the installed one.
        Declined,
        Failed
    };

    Kind kind = Kind::Failed;
    /// What was asked for.
    QString path;
    /// Empty when it was not read.
    QString identifier;
    QString name;
    QString version;
    /// Why it has failed, in the user's language; of an installation also what went wrong beside it. Else empty.
    QString message;
};

/// Installs plug-ins that the user has as a file: a bundle, or a zip archive of one. Shows nothing itself. Main thread
/// only.
///
/// A copy is made or unpacked first, on another thread, and read; whatever cannot be installed ends there. Then the
/// framework moves it into its place, and the plug-ins are reloaded. The installed one is kept in the warehouse or in
/// the trash, and at its place when anything fails. The file itself is never changed.
class KORVAN_WIDGETS_EXPORT PluginFileInstaller final : public QObject
{
    Q_OBJECT

public:
    enum class Answer { Replace, Keep };
    /// Asks whether an installed plug-in may be replaced. `answer` is called once, now or later; one that is let go of
    /// without a call counts as Keep, without a word.
    using Question = std::function<void(const PluginReplacement &replacement, std::function<void(Answer)> answer)>;

    /// Without a question nothing is ever replaced. The manager may go first.
    PluginFileInstaller(KRPluginManager &manager, Question question, QObject *parent = nullptr);
    ~PluginFileInstaller() override;

    /// Returns at once; `finished` tells the end.
    void install(const QString &path);
    /// Whether a path can be tried: by its name, without reading it.
    static bool canInstall(const QString &path);

signals:
    void finished(const PluginInstallOutcome &outcome);

private:
    struct Candidate;
    using CandidatePointer = std::shared_ptr<Candidate>;

    void staged(const QString &path, const Result<std::shared_ptr<StagedPlugin>> &result);
    Result<std::shared_ptr<KRPluginBundle>> read(const StagedPlugin &staged, const QString &path) const;
    void ask(const CandidatePointer &candidate, const std::shared_ptr<KRPluginBundle> &installed);
    void finish(const CandidatePointer &candidate);
    void fail(const QString &path, const QString &message);

    QPointer<KRPluginManager> m_manager;
    Question m_question;
};
