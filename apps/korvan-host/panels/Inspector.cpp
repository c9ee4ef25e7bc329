#include "panels/Inspector.h"

#include "panels/InspectorSections.h"

#include <QApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTimer>
#include <QVBoxLayout>

Inspector::Inspector(std::shared_ptr<Document> document, QWidget *parent)
    : QScrollArea(parent)
    , m_document(std::move(document))
    , m_nothing(new QLabel(tr("Nothing is selected.")))
    , m_content(new ContentSection(m_document))
{
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAccessibleName(tr("Inspector"));
    m_sections = {
        new GeneralSection(m_document), new StyleSection(m_document), m_content, new PluginDataSection(m_document)};
    m_nothing->setAlignment(Qt::AlignCenter);
    m_nothing->setEnabled(false);
    m_nothing->setMargin(24);

    auto *const content = new QWidget;
    auto *const column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 8);
    column->setSpacing(4);
    column->addWidget(m_nothing);
    for (auto *const section : std::as_const(m_sections))
        column->addWidget(section);
    column->addStretch();
    setWidget(content);
    setMinimumWidth(240);

    m_observer = m_document->observe([this](const DocumentEvent &) { refreshLater(); });
    refresh();
}

Inspector::~Inspector() = default;

void Inspector::refreshLater()
{
    if (m_isRefreshPlanned)
        return;
    m_isRefreshPlanned = true;
    QTimer::singleShot(0, this, &Inspector::refresh);
}

void Inspector::refresh()
{
    m_isRefreshPlanned = false;
    const auto selected = m_document->selection();
    if (selected != m_shown) {
        // What is being entered was meant for the layers that were shown.
        auto *const focus = QApplication::focusWidget();
        if (focus && isAncestorOf(focus))
            focus->clearFocus();
        m_shown = selected;
    }
    m_nothing->setVisible(selected.isEmpty());
    for (auto *const section : std::as_const(m_sections)) {
        section->setVisible(!selected.isEmpty());
        if (!selected.isEmpty())
            section->setLayers(selected);
    }
}

void Inspector::editText()
{
    refresh();
    m_content->textField().setFocus();
    m_content->textField().selectAll();
}
