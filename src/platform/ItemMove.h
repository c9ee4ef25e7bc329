#pragma once

#include "platform/FileDescriptor.h"
#include "platform/KRError.h"

#include <QByteArray>

#include <optional>

/// One move of a file, a link or a folder to a path where nothing is. Until carryOut() has succeeded nothing has
/// changed, and takeBack() undoes it for as long as the object lives.
///
/// On one file system it is a rename and needs no room. To another file system the item is copied beside its new place
/// under a hidden name, flushed to the disk and renamed; then the old one gets a hidden name, and is removed at the
/// object's end. So at any moment, even if the program is killed, each of both places has the whole item or nothing,
/// and one of them has it. What a killed program leaves under hidden names goes with a later move from or into the
/// same folder.
class ItemMove
{
public:
    ItemMove(const QByteArray &from, const QByteArray &to);
    ~ItemMove();
    ItemMove(const ItemMove &) = delete;
    ItemMove &operator=(const ItemMove &) = delete;

    /// Does beforehand what takes time and room. Nil, or why the move will fail; carryOut() is then of no use. May be
    /// left out.
    std::optional<KRError> prepare();

    /// Nil when the item is at its new place and gone from the old one. Something that is at the new place already is
    /// an error, as is a folder on the way there that does not exist.
    std::optional<KRError> carryOut();

    /// After carryOut() has succeeded: nil when all is as it was before.
    std::optional<KRError> takeBack();

private:
    std::optional<KRError> copyBesideTarget();
    std::optional<KRError> copyInOneStep();
    std::optional<KRError> renameCopy();
    std::optional<KRError> setSourceAside();

    QByteArray m_from;
    QByteArray m_to;
    /// The copy, until it has its place.
    QByteArray m_copy;
    /// The old item, from when the copy has its place.
    QByteArray m_aside;
    /// Keep others from removing the two.
    FileDescriptor m_copyLock;
    FileDescriptor m_sourceLock;
};

/// A move in one step. False with the error when nothing has changed.
bool moveItem(const QByteArray &from, const QByteArray &to, KRError *error = nullptr);
