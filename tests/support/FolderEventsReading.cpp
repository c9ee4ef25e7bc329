#include "support/FolderEventsReading.h"

#include <QCoreApplication>

void readFolderEvents()
{
    QCoreApplication::processEvents();
}

void letFoldersSettle(TestEnvironment &environment)
{
    readFolderEvents();
    environment.queue.advance(std::chrono::milliseconds(100));
}
