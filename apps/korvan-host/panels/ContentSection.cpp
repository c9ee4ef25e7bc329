#include "panels/InspectorSections.h"

#include "look/Icons.h"
#include "panels/JSONTree.h"

#include <QEvent>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QToolButton>

ContentSection::ContentSection(std::shared_ptr<Document> document, QWidget *parent)
    : InspectorSection(std::move(document), tr("Content"), parent)
    , m_text(new QPlainTextEdit)
    , m_image(new QLineEdit)
    , m_imageRow(new QWidget)
{
    m_text->setAccessibleName(tr("Text"));
    m_text->setTabChangesFocus(true);
    m_text->setFixedHeight(84);
    m_text->installEventFilter(this);
    form().addRow(m_text);

    m_image->setAccessibleName(tr("Picture"));
    m_image->setPlaceholderText(tr("No picture"));
    connect(m_image, &QLineEdit::editingFinished, this, [this] {
        if (!m_image->isModified())
            return;
        m_image->setModified(false);
        const auto url = m_image->text();
        changeLayers(
            tr("Picture"), [&](Layer &layer) { layer.setImage(url.isEmpty() ? std::nullopt : std::optional(url)); });
    });
    auto *const choose = new QToolButton;
    choose->setIcon(lineIcon(QStringLiteral("open")));
    choose->setToolTip(tr("Choose a picture…"));
    choose->setAccessibleName(tr("Choose a picture"));
    connect(choose, &QToolButton::clicked, this, &ContentSection::chooseImage);
    auto *const row = new QHBoxLayout(m_imageRow);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_image);
    row->addWidget(choose);
    form().addRow(m_imageRow);
}

void ContentSection::chooseImage()
{
    const auto path = QFileDialog::getOpenFileName(
        this, tr("Choose a picture"), {}, tr("Pictures (*.png *.jpg *.jpeg *.gif *.webp *.bmp)"));
    if (!path.isEmpty())
        changeLayers(tr("Picture"), [&](Layer &layer) { layer.setImage(QUrl::fromLocalFile(path).toString()); });
}

bool ContentSection::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_text && event->type() == QEvent::FocusOut)
        takeTextOver();
    return InspectorSection::eventFilter(watched, event);
}

void ContentSection::takeTextOver()
{
    if (!m_text->document()->isModified())
        return;
    m_text->document()->setModified(false);
    const auto text = m_text->toPlainText();
    changeLayers(tr("Text"), [&](Layer &layer) {
        if (layer.type() == u"text")
            layer.setText(text);
    });
}

void ContentSection::showLayer(const Layer &layer)
{
    const bool isText = layer.type() == u"text";
    const bool isImage = layer.type() == u"image";
    setVisible(isText || isImage);
    form().setRowVisible(m_text, isText);
    form().setRowVisible(m_imageRow, isImage);
    const auto text = layer.text().value_or(QString());
    if (!m_text->document()->isModified() && m_text->toPlainText() != text) {
        m_text->setPlainText(text);
        m_text->document()->setModified(false);
    }
    if (!m_image->isModified())
        m_image->setText(layer.image().value_or(QString()));
}

PluginDataSection::PluginDataSection(std::shared_ptr<Document> document, QWidget *parent)
    : InspectorSection(std::move(document), tr("Plug-in Data"), parent)
    , m_tree(new JSONTree)
    , m_nothing(new QLabel(tr("No plug-in keeps anything on this layer.")))
{
    m_tree->setAccessibleName(tr("Plug-in data of the layer"));
    m_nothing->setWordWrap(true);
    m_nothing->setEnabled(false);
    form().addRow(m_tree);
    form().addRow(m_nothing);
}

void PluginDataSection::showLayer(const Layer &layer)
{
    const auto userInfo = layer.userInfo().value_or(QVariantMap());
    m_tree->setValues(userInfo);
    form().setRowVisible(m_tree, !userInfo.isEmpty());
    form().setRowVisible(m_nothing, userInfo.isEmpty());
}
