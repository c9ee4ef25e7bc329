#pragma once

#include "panels/InspectorSection.h"

#include <QHash>

class ColourButton;
class JSONTree;
class NumberField;
class QComboBox;
class QFontComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

/// Name, type and frame.
class GeneralSection final : public InspectorSection
{
    Q_OBJECT

public:
    explicit GeneralSection(std::shared_ptr<Document> document, QWidget *parent = nullptr);

protected:
    void showLayer(const Layer &layer) override;

private:
    NumberField *addFrameField(const QString &name, const QString &key, double minimum);

    QLineEdit *m_name;
    QLabel *m_type;
    QHash<QString, NumberField *> m_frame;
};

/// What of a style the layer's type has.
class StyleSection final : public InspectorSection
{
    Q_OBJECT

public:
    explicit StyleSection(std::shared_ptr<Document> document, QWidget *parent = nullptr);

protected:
    void showLayer(const Layer &layer) override;

private:
    void addRow(const QString &key, const QString &title, QWidget *field);
    void addNumber(const QString &key, const QString &title, double maximum);
    void addColour(const QString &key, const QString &title);
    void addFont();

    QHash<QString, QWidget *> m_rows;
    QHash<QString, NumberField *> m_numbers;
    QHash<QString, ColourButton *> m_colours;
    QFontComboBox *m_family = nullptr;
    QComboBox *m_weight = nullptr;
    QComboBox *m_alignment = nullptr;
};

/// The text of a text layer, the picture of an image layer.
class ContentSection final : public InspectorSection
{
    Q_OBJECT

public:
    explicit ContentSection(std::shared_ptr<Document> document, QWidget *parent = nullptr);

    /// Where the text is entered.
    QPlainTextEdit &textField() const { return *m_text; }

protected:
    void showLayer(const Layer &layer) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void takeTextOver();
    void chooseImage();

    QPlainTextEdit *m_text;
    QLineEdit *m_image;
    QWidget *m_imageRow;
};

/// What plug-ins keep on the layer.
class PluginDataSection final : public InspectorSection
{
    Q_OBJECT

public:
    explicit PluginDataSection(std::shared_ptr<Document> document, QWidget *parent = nullptr);

protected:
    void showLayer(const Layer &layer) override;

private:
    JSONTree *m_tree;
    QLabel *m_nothing;
};
