#pragma once

#include "platform/Export.h"

#include <QSet>
#include <QString>
#include <QStringView>

/// Which names a script's text gives its session, found without running anything: functions, classes and variables at
/// the top level, and what is assigned to the global object.
///
/// Scripts can make globals in ways that no text shows, and a text cannot show whether it is reached. So a name that is
/// missing here is missing for sure, as long as the text is a valid script; everything else stays open.
class KORVAN_EXPORT ScriptOutline
{
public:
    enum class Definition {
        /// The script defines the name.
        Defined,
        /// It may: somewhere the name is assigned to something that may be the global object.
        Possible,
        /// Nothing mentions the name, but the script makes globals whose names it computes.
        Uncertain,
        Missing
    };

    explicit ScriptOutline(const QString &source);

    Definition definitionOf(const QString &name) const;

private:
    friend class ScriptOutlineScan;

    QString m_source; // the views are of it
    QSet<QStringView> m_defined;
    QSet<QStringView> m_possible;
    /// Assigned to members of any object.
    QSet<QStringView> m_members;
    bool m_hasGlobalAlias = false;
    bool m_computesNames = false;
};
