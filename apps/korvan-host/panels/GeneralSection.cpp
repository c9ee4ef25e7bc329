#include "panels/InspectorSections.h"

#include "editing/LayerCommands.h"
#include "editing/LayerFrames.h"
#include "panels/NumberField.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

namespace {

constexpr double farthest = 1e7;

} // namespace

GeneralSection::GeneralSection(std::shared_ptr<Document> document, QWidget *parent)
    : InspectorSection(std::move(document), tr("Layer"), parent)
    , m_name(new QLineEdit)
    , m_type(new QLabel)
{
    m_name->setAccessibleName(tr("Name"));
    connect(m_name, &QLineEdit::editingFinished, this, [this] {
        if (m_name->isModified())
            changeLayers(tr("Rename"), [this](Layer &layer) { layer.setName(m_name->text()); });
        m_name->setModified(false);
    });
    form().addRow(tr("Name"), m_name);
    form().addRow(tr("Type"), m_type);

    auto *const grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(6);
    const auto add = [&](int row, int column, const QString &title, const QString &name, const QString &key,
                         double minimum) {
        auto *const label = new QLabel(title);
        auto *const field = addFrameField(name, key, minimum);
        label->setBuddy(field);
        grid->addWidget(label, row, column * 2);
        grid->addWidget(field, row, column * 2 + 1);
    };
    add(0, 0, tr("X"), tr("Horizontal position"), QStringLiteral("x"), -farthest);
    add(0, 1, tr("Y"), tr("Vertical position"), QStringLiteral("y"), -farthest);
    add(1, 0, tr("W"), tr("Width"), QStringLiteral("width"), 0);
    add(1, 1, tr("H"), tr("Height"), QStringLiteral("height"), 0);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    form().addRow(grid);
}

NumberField *GeneralSection::addFrameField(const QString &name, const QString &key, double minimum)
{
    auto *const field = new NumberField(name, minimum, farthest);
    m_frame.insert(key, field);
    connect(field, &NumberField::edited, this, [this, key](double value) {
        changeLayers(tr("Frame"), [&](Layer &layer) {
            // What is in a group goes along with it.
            const FrameSnapshot frames({std::static_pointer_cast<Layer>(layer.shared_from_this())});
            const auto from = boundsOf(layer);
            auto to = from;
            if (key == u"x")
                to.moveLeft(value);
            else if (key == u"y")
                to.moveTop(value);
            else if (key == u"width")
                to.setWidth(value);
            else
                to.setHeight(value);
            if (to.size() == from.size())
                frames.applyOffset(to.topLeft() - from.topLeft());
            else
                frames.applyRect(from, to);
            if (layer.layers().isEmpty())
                setFrameOf(layer, to); // also what had no size to scale
        });
    });
    return field;
}

void GeneralSection::showLayer(const Layer &layer)
{
    if (!m_name->isModified() && m_name->text() != layer.name())
        m_name->setText(layer.name());
    m_name->setEnabled(layers().size() == 1);
    m_type->setText(layers().size() == 1 ? typeTitle(layer.type()) : tr("%1 layers").arg(layers().size()));
    const auto bounds = boundsOf(layer);
    m_frame[QStringLiteral("x")]->showValue(bounds.x());
    m_frame[QStringLiteral("y")]->showValue(bounds.y());
    m_frame[QStringLiteral("width")]->showValue(bounds.width());
    m_frame[QStringLiteral("height")]->showValue(bounds.height());
}
