#pragma once

#include "document/Document.h"

#include <QUndoStack>

#include <memory>

/// The steps of a document's history as a stack of Qt's: what the user, a plug-in's command or a host's action has
/// changed is one step each.
class DocumentUndoStack final : public QUndoStack
{
public:
    explicit DocumentUndoStack(std::shared_ptr<Document> document);
    ~DocumentUndoStack() override;

    /// What comes next is a step of its own, and the document counts as saved.
    void markSaved();
    /// Takes back the newest step, if it is not `index` steps old already, and forgets it: an action of the user that
    /// was broken off has never happened.
    void dropStepsAfter(int index);

private:
    std::shared_ptr<Document> m_document;
};
