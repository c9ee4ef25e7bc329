#include "editing/DocumentUndoStack.h"

#include "editing/LayerTexts.h"

#include <QUndoCommand>

namespace {

class StepCommand final : public QUndoCommand
{
public:
    explicit StepCommand(std::shared_ptr<UndoStep> step)
        : QUndoCommand(step->text().isEmpty() ? LayerTexts::tr("Change") : step->text())
        , m_step(std::move(step))
    { }

    void undo() override { m_step->undo(); }
    /// The stack calls it when it takes the command in too: the step is done then, and nothing happens.
    void redo() override { m_step->redo(); }

private:
    std::shared_ptr<UndoStep> m_step;
};

} // namespace

DocumentUndoStack::DocumentUndoStack(std::shared_ptr<Document> document)
    : m_document(std::move(document))
{
    m_document->history().setStepHandler(
        [this](const std::shared_ptr<UndoStep> &step) { push(new StepCommand(step)); });
}

DocumentUndoStack::~DocumentUndoStack()
{
    m_document->history().setStepHandler(nullptr);
}

void DocumentUndoStack::markSaved()
{
    m_document->history().closeStep();
    setClean();
}

void DocumentUndoStack::dropStepsAfter(int index)
{
    while (this->index() > index) {
        auto *const newest = const_cast<QUndoCommand *>(command(this->index() - 1));
        newest->undo(); // the stack itself only forgets a command that is obsolete
        newest->setObsolete(true);
        undo();
    }
}
