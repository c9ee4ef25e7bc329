#pragma once

#include <QStringList>

class QMimeData;

/// The files of a drag, by what this program does with them.
struct DroppedFiles
{
    QStringList documents;
    QStringList plugins;
    QStringList images;

    bool isEmpty() const { return documents.isEmpty() && plugins.isEmpty() && images.isEmpty(); }
};

/// Those that nothing can be done with are left out.
DroppedFiles droppedFiles(const QMimeData &data);
