#include "panels/InspectorSection.h"

#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

InspectorSection::InspectorSection(std::shared_ptr<Document> document, const QString &title, QWidget *parent)
    : QWidget(parent)
    , m_document(std::move(document))
    , m_form(new QFormLayout)
{
    auto *const heading = new QLabel(title);
    auto font = heading->font();
    font.setWeight(QFont::DemiBold);
    heading->setFont(font);
    m_form->setContentsMargins(0, 0, 0, 0);
    m_form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    m_form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_form->setHorizontalSpacing(10);
    m_form->setVerticalSpacing(8);
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(14, 8, 14, 10);
    column->setSpacing(8);
    column->addWidget(heading);
    column->addLayout(m_form);
}

InspectorSection::~InspectorSection() = default;

void InspectorSection::setLayers(const QList<LayerPointer> &layers)
{
    m_layers = layers;
    showLayer(*m_layers.first());
}

void InspectorSection::changeLayers(const QString &stepName, const std::function<void(Layer &)> &change)
{
    const auto changed = m_layers; // which the change may replace
    const DocumentHistory::Group step(*m_document, stepName);
    for (const auto &layer : changed)
        change(*layer);
}

void InspectorSection::changeStyle(const QString &key, const QVariant &value)
{
    changeLayers(tr("Style"), [&](Layer &layer) {
        if (!Layer::styleKeysOfType(layer.type()).contains(key))
            return;
        auto style = layer.style();
        if (value.isValid())
            style.insert(key, value);
        else
            style.remove(key);
        layer.setStyle(style);
    });
}
