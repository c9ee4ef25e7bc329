#include "validation/Manifest.h"

#include <algorithm>

Manifest::Manifest(const QString &bundle, const QString &text, const JSONNode &root)
    : m_bundle(bundle)
    , m_text(text)
    , m_root(root)
{ }

QString Manifest::path(const QString &bundle)
{
    return bundle + QStringLiteral("/Contents/Korvan/manifest.json");
}

QString Manifest::scriptFolder() const
{
    return m_bundle + QStringLiteral("/Contents/Korvan");
}

Problems Manifest::problems() const
{
    auto findings = m_findings;
    std::stable_sort(findings.begin(), findings.end(),
        [](const Finding &first, const Finding &second) { return first.offset < second.offset; });
    Problems problems;
    RisingPosition position(m_text);
    for (const auto &finding : findings) {
        problems.append(
            {finding.severity, finding.key, finding.message, path(m_bundle), position.advancedTo(finding.offset)});
    }
    return problems + m_problemsOfFiles;
}
