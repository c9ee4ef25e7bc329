#include "widgets/plugins/PluginQuestions.h"

#include "localization/Localizable.h"
#include "widgets/PlainText.h"
#include "widgets/PluginText.h"

#include <QMessageBox>
#include <QPushButton>

namespace {

constexpr qsizetype longestName = 80;

enum class DefaultButton { Accept, Cancel };

struct Question
{
    QString title;
    QString text;
    QString accept;
    DefaultButton defaultButton;
};

void ask(QWidget *window, const Question &question, std::function<void(bool)> answered)
{
    auto *const box = new QMessageBox(window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setIcon(QMessageBox::Question);
    box->setTextFormat(Qt::PlainText);
    box->setText(question.title);
    box->setInformativeText(question.text);
    auto *const accept = box->addButton(question.accept, QMessageBox::AcceptRole);
    auto *const cancel = box->addButton(QMessageBox::Cancel);
    cancel->setText(Localizable::tr("&Cancel"));
    box->setDefaultButton(
        question.defaultButton == DefaultButton::Accept ? accept : qobject_cast<QPushButton *>(cancel));
    box->setEscapeButton(cancel);
    showAsPlainText(*box);
    QObject::connect(box, &QMessageBox::finished, window,
        [box, accept, answered = std::move(answered)] { answered(box->clickedButton() == accept); });
    box->open();
}

QString replacementText(const PluginReplacement &replacement)
{
    const auto installed = plainLine(replacement.installedVersion, longestName);
    const auto offered = plainLine(replacement.newVersion, longestName);
    switch (replacement.kind) {
    case PluginReplacement::Kind::Newer:
        return Localizable::tr("Version %1 is installed. The file holds version %2, which is newer.")
            .arg(installed, offered);
    case PluginReplacement::Kind::Same:
        return Localizable::tr("The file holds the version that is installed: %1.").arg(installed);
    case PluginReplacement::Kind::Older:
        break;
    }
    return Localizable::tr("Version %1 is installed. The file holds version %2, which is older.")
        .arg(installed, offered);
}

} // namespace

void askToRemovePlugin(QWidget *window, const QString &name, std::function<void()> confirmed)
{
    const Question question{Localizable::tr("Remove “%1”?").arg(plainLine(name, longestName)),
        Localizable::tr("Its commands are stopped, and its folder is moved to the trash."), Localizable::tr("&Remove"),
        DefaultButton::Cancel};
    ask(window, question, [confirmed = std::move(confirmed)](bool isConfirmed) {
        if (isConfirmed)
            confirmed();
    });
}

void askToReplacePlugin(
    QWidget *window, const PluginReplacement &replacement, std::function<void(PluginFileInstaller::Answer)> answer)
{
    const bool isNewer = replacement.kind == PluginReplacement::Kind::Newer;
    const Question question{Localizable::tr("Replace “%1”?").arg(plainLine(replacement.name, longestName)),
        replacementText(replacement), Localizable::tr("&Replace"),
        isNewer ? DefaultButton::Accept : DefaultButton::Cancel};
    ask(window, question, [answer = std::move(answer)](bool isConfirmed) {
        answer(isConfirmed ? PluginFileInstaller::Answer::Replace : PluginFileInstaller::Answer::Keep);
    });
}
