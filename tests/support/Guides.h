#pragma once

#include <QFile>
#include <QList>
#include <QRegularExpression>
#include <QString>

#include <optional>

/// One of the documents in "docs".
inline QString guide(const QString &name)
{
    QFile file(QStringLiteral(KORVAN_SOURCE_DIR "/docs/") + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// A block of code in a guide, with the comments right before it.
struct GuideBlock
{
    QString comments;
    QString language;
    QString text;

    /// What a comment says behind that key: "<!-- key: what -->", "<!-- key -->"; nil without it.
    std::optional<QString> remark(const QString &key) const
    {
        const QRegularExpression expression(QStringLiteral("<!-- %1(?:: ([^\n]*))? -->").arg(key));
        const auto match = expression.match(comments);
        return match.hasMatch() ? std::optional(match.captured(1)) : std::nullopt;
    }
};

/// Those with a language.
inline QList<GuideBlock> blocksOfGuide(const QString &name)
{
    static const QRegularExpression fence(QStringLiteral("((?:<!-- [^\n]* -->\n)*)```(\\w*)\n(.*?\n)```\n"),
        QRegularExpression::DotMatchesEverythingOption);
    QList<GuideBlock> blocks;
    const auto text = guide(name);
    for (auto match = fence.globalMatch(text); match.hasNext();) {
        const auto found = match.next();
        if (!found.captured(2).isEmpty())
            blocks.append({found.captured(1), found.captured(2), found.captured(3)});
    }
    return blocks;
}
