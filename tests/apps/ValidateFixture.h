#pragma once

#include "CommandLineFixture.h"

#include <QJsonArray>

#include <algorithm>

/// Has plug-ins checked, and puts what is reported of them into lines.
class ValidateFixture : protected CommandLineFixture
{
protected:
    /// "error script.js:1:2 key: message" for each problem that the program reports of plugins/x.korvanplugin.
    QStringList reports(const QString &bundle = QStringLiteral("plugins/x.korvanplugin")) const
    {
        using namespace Qt::StringLiterals;
        const auto finished = run({u"validate"_s, bundle, u"--json"_s});
        const auto path = QFileInfo(m_folder->filePath(bundle)).canonicalFilePath();
        const auto document = finished.json()[u"bundles"_s].toArray()[0].toObject();
        if (document[u"path"_s].toString() != path)
            return {u"another path: "_s + document[u"path"_s].toString()};
        QStringList reports;
        for (const auto &element : document[u"problems"_s].toArray()) {
            const auto problem = element.toObject();
            const auto file =
                QDir::cleanPath(QDir(path + u"/Contents/Korvan"_s).relativeFilePath(problem[u"file"_s].toString()));
            const auto place =
                u"%1:%2:%3"_s.arg(file).arg(problem[u"line"_s].toInt()).arg(problem[u"column"_s].toInt());
            const auto key = problem[u"key"_s].toString();
            reports.append(QStringList{problem[u"severity"_s].toString(), place}.join(u' ')
                + (key.isEmpty() ? QString() : u' ' + key) + u": "_s + problem[u"message"_s].toString());
        }
        const bool isWrong = std::any_of(
            reports.begin(), reports.end(), [](const QString &report) { return report.startsWith(u"error "_s); });
        if (finished.exitCode != (isWrong ? 1 : 0) || !finished.errors.isEmpty())
            reports.append(u"exit %1 %2"_s.arg(finished.exitCode).arg(finished.errors.join(u'\n')));
        return reports;
    }
};
