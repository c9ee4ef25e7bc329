#pragma once

#include "document/Layer.h"

#include <functional>
#include <memory>

/// One thing that has just changed in a document.
struct DocumentEvent
{
    enum class Kind {
        LayerAdded,
        /// With everything in it; the layer itself is as it was.
        LayerRemoved,
        /// To another place among its siblings, or to another parent.
        LayerMoved,
        /// Its name, frame, style, text, image or plug-in data.
        LayerChanged,
        SelectionChanged,
        /// The document's own name or plug-in data.
        DocumentChanged
    };

    Kind kind;
    /// Null for the last two.
    LayerPointer layer;
};

/// Keeps one observation of a document alive; destroying or resetting it ends the observation, also from inside the
/// callback and also after the document is gone. It has one owner.
class DocumentObserver
{
public:
    using Callback = std::function<void(const DocumentEvent &event)>;

    DocumentObserver() = default;
    explicit DocumentObserver(std::shared_ptr<Callback> callback)
        : m_callback(std::move(callback))
    { }
    DocumentObserver(DocumentObserver &&) noexcept = default;
    DocumentObserver &operator=(DocumentObserver &&) noexcept = default;
    DocumentObserver(const DocumentObserver &) = delete;
    DocumentObserver &operator=(const DocumentObserver &) = delete;
    ~DocumentObserver() = default;

    void reset() { m_callback.reset(); }

private:
    std::shared_ptr<Callback> m_callback;
};
