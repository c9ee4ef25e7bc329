#include "panels/InspectorSections.h"

#include "canvas/LayerAppearance.h"
#include "panels/ColourButton.h"
#include "panels/NumberField.h"

#include <QComboBox>
#include <QFontComboBox>
#include <QFormLayout>

#include <cmath>

namespace {

const auto opacityKey = QStringLiteral("opacity");
const auto familyKey = QStringLiteral("fontFamily");
const auto weightKey = QStringLiteral("fontWeight");
const auto alignmentKey = QStringLiteral("textAlign");

constexpr double wholeOpacity = 100; // in percent

/// A whole number as one, so that the file does not say 3.0.
QVariant numberValue(double value)
{
    return value == std::floor(value) ? QVariant(qlonglong(value)) : QVariant(value);
}

} // namespace

StyleSection::StyleSection(std::shared_ptr<Document> document, QWidget *parent)
    : InspectorSection(std::move(document), tr("Style"), parent)
{
    addNumber(opacityKey, tr("Opacity"), wholeOpacity);
    m_numbers[opacityKey]->setSuffix(QStringLiteral(" %"));
    addColour(QStringLiteral("fill"), tr("Fill"));
    addColour(QStringLiteral("border"), tr("Border"));
    addNumber(QStringLiteral("borderWidth"), tr("Border width"), 1000);
    addNumber(QStringLiteral("cornerRadius"), tr("Corner radius"), 10000);
    addFont();
}

void StyleSection::addRow(const QString &key, const QString &title, QWidget *field)
{
    m_rows.insert(key, field);
    form().addRow(title, field);
}

void StyleSection::addNumber(const QString &key, const QString &title, double maximum)
{
    auto *const field = new NumberField(title, 0, maximum);
    m_numbers.insert(key, field);
    connect(field, &NumberField::edited, this,
        [this, key](double value) { changeStyle(key, numberValue(key == opacityKey ? value / wholeOpacity : value)); });
    addRow(key, title, field);
}

void StyleSection::addColour(const QString &key, const QString &title)
{
    auto *const button = new ColourButton(title);
    m_colours.insert(key, button);
    connect(button, &ColourButton::colourChosen, this, [this, key](const QColor &colour) {
        changeStyle(key, colour.isValid() ? QVariant(textFromColour(colour)) : QVariant());
    });
    addRow(key, title, button);
}

void StyleSection::addFont()
{
    m_family = new QFontComboBox;
    m_family->setAccessibleName(tr("Font"));
    m_family->setMinimumContentsLength(8);
    m_family->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    connect(
        m_family, &QComboBox::textActivated, this, [this](const QString &family) { changeStyle(familyKey, family); });
    addRow(familyKey, tr("Font"), m_family);
    addNumber(QStringLiteral("fontSize"), tr("Font size"), 10000);

    m_weight = new QComboBox;
    m_weight->setAccessibleName(tr("Font weight"));
    for (const auto &[title, weight] : {std::pair(tr("Light"), 300), std::pair(tr("Regular"), 400),
             std::pair(tr("Medium"), 500), std::pair(tr("Bold"), 700)})
        m_weight->addItem(title, weight);
    connect(m_weight, &QComboBox::activated, this,
        [this](int index) { changeStyle(weightKey, m_weight->itemData(index)); });
    addRow(weightKey, tr("Weight"), m_weight);

    m_alignment = new QComboBox;
    m_alignment->setAccessibleName(tr("Alignment"));
    for (const auto &[title, alignment] :
        {std::pair(tr("Left"), "left"), std::pair(tr("Centre"), "center"), std::pair(tr("Right"), "right")})
        m_alignment->addItem(title, QString::fromLatin1(alignment));
    connect(m_alignment, &QComboBox::activated, this,
        [this](int index) { changeStyle(alignmentKey, m_alignment->itemData(index)); });
    addRow(alignmentKey, tr("Alignment"), m_alignment);
}

void StyleSection::showLayer(const Layer &layer)
{
    const auto keys = Layer::styleKeysOfType(layer.type());
    for (auto row = m_rows.cbegin(); row != m_rows.cend(); ++row)
        form().setRowVisible(row.value(), keys.contains(row.key()));

    const auto appearance = appearanceOf(layer);
    const auto style = layer.style();
    m_numbers[opacityKey]->showValue(appearance.opacity * wholeOpacity);
    m_numbers[QStringLiteral("borderWidth")]->showValue(appearance.borderWidth);
    m_numbers[QStringLiteral("cornerRadius")]->showValue(appearance.cornerRadius);
    m_numbers[QStringLiteral("fontSize")]->showValue(appearance.font.pixelSize());
    for (auto button = m_colours.cbegin(); button != m_colours.cend(); ++button)
        button.value()->setColour(colourFromText(style.value(button.key()).toString()));
    m_family->setCurrentFont(appearance.font);
    m_weight->setCurrentIndex(m_weight->findData(int(appearance.font.weight())));
    const auto alignment = style.value(alignmentKey, QStringLiteral("left")).toString();
    m_alignment->setCurrentIndex(std::max(0, m_alignment->findData(alignment)));
}
