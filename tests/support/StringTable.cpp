#include "support/StringTable.h"

#include <QFile>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {

StringTableText readMessage(QXmlStreamReader &reader, const QString &table)
{
    StringTableText text{table, {}, {}, {}};
    while (reader.readNextStartElement()) {
        if (reader.name() == "source"_L1) {
            text.key = reader.readElementText();
        } else if (reader.name() == "translation"_L1) {
            text.state = reader.attributes().value("type"_L1).toString();
            text.translation = reader.readElementText();
        } else {
            reader.skipCurrentElement();
        }
    }
    return text;
}

void readContext(QXmlStreamReader &reader, QList<StringTableText> &texts)
{
    QString table;
    while (reader.readNextStartElement()) {
        if (reader.name() == "name"_L1)
            table = reader.readElementText();
        else if (reader.name() == "message"_L1)
            texts.append(readMessage(reader, table));
        else
            reader.skipCurrentElement();
    }
}

} // namespace

QList<StringTableText> stringTableTexts(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    QXmlStreamReader reader(&file);
    QList<StringTableText> texts;
    reader.readNextStartElement(); // the table itself
    while (reader.readNextStartElement())
        readContext(reader, texts);
    if (reader.hasError())
        qFatal("%s: %s", qPrintable(path), qPrintable(reader.errorString()));
    return texts;
}
