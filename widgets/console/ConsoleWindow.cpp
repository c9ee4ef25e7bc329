#include "widgets/console/ConsoleWindow.h"

#include "localization/Localizable.h"
#include "manager/PluginEditor.h"
#include "widgets/PluginText.h"
#include "widgets/Symbols.h"
#include "widgets/console/ConsoleLog.h"
#include "widgets/console/ConsoleTable.h"
#include "widgets/console/LogFilter.h"
#include "widgets/console/RunningCommandsPanel.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QDesktopServices>
#include <QFileInfo>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

/// What the system may open by itself: a program among a plug-in's files must not start by a click on a message.
bool isScript(const QUrl &file)
{
    static const QStringList suffixes{
        QStringLiteral("js"), QStringLiteral("mjs"), QStringLiteral("cjs"), QStringLiteral("json")};
    return suffixes.contains(QFileInfo(file.toLocalFile()).suffix().toLower());
}

QToolButton *makeButton(QAction *action, Symbol symbol, const QString &text)
{
    action->setIcon(symbolIcon(symbol));
    action->setText(text);
    auto *const button = new QToolButton;
    button->setDefaultAction(action);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setAccessibleName(text);
    return button;
}

} // namespace

ConsoleWindow::ConsoleWindow(std::shared_ptr<ConsoleLog> log, KRPluginManager *manager, QWidget *parent)
    : QWidget(parent)
    , m_log(std::move(log))
    , m_filter(new LogFilter(m_log->entries(), this))
    , m_table(new ConsoleTable(m_log->entries(), *m_filter))
    , m_plugins(new QComboBox)
    , m_level(new QComboBox)
    , m_search(new QLineEdit)
    , m_detail(new QPlainTextEdit)
    , m_count(new QLabel)
{
    setWindowTitle(Localizable::tr("Console"));
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(makeToolBar());
    layout->addWidget(makeContent(manager), 1);
    resize(860, 520);
    connect(m_table, &ConsoleTable::placeActivated, this, &ConsoleWindow::placeActivated);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &ConsoleWindow::showSelected);
    connect(&m_log->entries(), &LogModel::batchEnded, this, &ConsoleWindow::showCount);
    connect(m_filter, &QAbstractItemModel::modelReset, this, &ConsoleWindow::showSelected);
    connect(m_filter, &QAbstractItemModel::layoutChanged, this, &ConsoleWindow::showSelected);
    showSelected();
    showCount();
}

ConsoleWindow::~ConsoleWindow()
{
    delete m_table; // before the entries that it shows, which this object may be the last to hold
    delete m_filter;
}

QWidget *ConsoleWindow::makeToolBar()
{
    setUpPluginFilter();
    setUpLevelFilter();
    setUpSearch();
    auto *const bar = new QWidget;
    auto *const row = new QHBoxLayout(bar);
    row->setContentsMargins(12, 10, 12, 10);
    row->addWidget(m_plugins);
    row->addWidget(m_level);
    row->addWidget(m_search, 1);
    row->addWidget(m_count);
    row->addWidget(
        makeButton(addShortcut(QKeySequence::Copy, &ConsoleWindow::copy), Symbol::Copy, Localizable::tr("Copy")));
    row->addWidget(makeButton(addShortcut(QKeySequence(Qt::CTRL | Qt::Key_L), &ConsoleWindow::clear), Symbol::Clear,
        Localizable::tr("Clear")));
    return bar;
}

void ConsoleWindow::setUpPluginFilter()
{
    m_plugins->setObjectName(QStringLiteral("PluginFilter"));
    m_plugins->setAccessibleName(Localizable::tr("Show entries of"));
    m_plugins->addItem(Localizable::tr("All plug-ins"));
    m_plugins->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_plugins->setMinimumContentsLength(16);
    const auto &known = m_log->plugins();
    for (auto plugin = known.begin(); plugin != known.end(); ++plugin)
        addPlugin(plugin.key(), plugin.value());
    connect(m_log.get(), &ConsoleLog::pluginAppeared, this, &ConsoleWindow::addPlugin);
    connect(m_plugins, &QComboBox::currentIndexChanged, this, [this](int index) {
        m_filter->setPlugin(index > 0 ? std::optional(m_plugins->currentData().toString()) : std::nullopt);
        showCount();
    });
}

void ConsoleWindow::setUpLevelFilter()
{
    m_level->setObjectName(QStringLiteral("LevelFilter"));
    m_level->setAccessibleName(Localizable::tr("Lowest level"));
    m_level->addItem(Localizable::tr("All levels"), int(LogLevel::Log));
    m_level->addItem(Localizable::tr("Warnings and errors"), int(LogLevel::Warning));
    m_level->addItem(Localizable::tr("Errors"), int(LogLevel::Error));
    connect(m_level, &QComboBox::currentIndexChanged, this, [this] {
        m_filter->setLowestLevel(static_cast<LogLevel>(m_level->currentData().toInt()));
        showCount();
    });
}

void ConsoleWindow::setUpSearch()
{
    m_search->setObjectName(QStringLiteral("ConsoleSearch"));
    m_search->setPlaceholderText(Localizable::tr("Search"));
    m_search->setAccessibleName(Localizable::tr("Search entries"));
    m_search->setClearButtonEnabled(true);
    m_search->addAction(symbolIcon(Symbol::Search), QLineEdit::LeadingPosition);
    addShortcut(QKeySequence::Find, [this] { m_search->setFocus(); });
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_filter->setSearch(text);
        showCount();
    });
}

template <class Slot>
QAction *ConsoleWindow::addShortcut(const QKeySequence &keys, Slot slot)
{
    auto *const action = new QAction(this);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, slot);
    addAction(action);
    return action;
}

QWidget *ConsoleWindow::makeContent(KRPluginManager *manager)
{
    m_detail->setObjectName(QStringLiteral("EntryDetail"));
    m_detail->setAccessibleName(Localizable::tr("Selected entry"));
    m_detail->setReadOnly(true);
    m_detail->setTabChangesFocus(true);
    m_detail->setFrameShape(QFrame::NoFrame);
    m_detail->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto *const splitter = new QSplitter(Qt::Vertical);
    splitter->setHandleWidth(1);
    splitter->addWidget(m_table);
    splitter->addWidget(m_detail);
    if (manager)
        splitter->addWidget(new RunningCommandsPanel(*manager));
    splitter->setStretchFactor(0, 1);
    splitter->setSizes({400, 90, 80});
    splitter->setCollapsible(0, false);
    return splitter;
}

/// In the order of the names, behind the first item.
void ConsoleWindow::addPlugin(const QString &identifier, const QString &name)
{
    const auto text = plainLine(name);
    int index = 1;
    while (index < m_plugins->count() && m_plugins->itemText(index).localeAwareCompare(text) < 0)
        ++index;
    m_plugins->insertItem(index, text, identifier);
}

void ConsoleWindow::showPlugin(const QString &identifier)
{
    m_plugins->setCurrentIndex(identifier.isEmpty() ? 0 : std::max(0, m_plugins->findData(identifier)));
}

void ConsoleWindow::placeActivated(const QModelIndex &index)
{
    const auto file = index.data(LogModel::FileRole).toUrl();
    const int line = index.data(LogModel::LineRole).toInt();
    if (isSignalConnected(QMetaMethod::fromSignal(&ConsoleWindow::locationActivated)))
        emit locationActivated(file, line);
    else if (!file.isEmpty() && openInPluginEditor(file, line) != EditorStart::Started && isScript(file))
        QDesktopServices::openUrl(file);
}

void ConsoleWindow::showSelected()
{
    const auto current = m_table->currentIndex();
    m_detail->setVisible(current.isValid());
    m_detail->setPlainText(plainLines(current.data(LogModel::TextRole).toString()));
}

void ConsoleWindow::showCount()
{
    const int shown = m_filter->rowCount();
    const int all = m_log->entries().rowCount();
    //: Of entries in a list that is filtered.
    m_count->setText(shown == all ? QString() : Localizable::tr("%1 of %2").arg(shown).arg(all));
}

void ConsoleWindow::copy() const
{
    QGuiApplication::clipboard()->setText(m_table->textToCopy());
}

void ConsoleWindow::clear()
{
    m_log->entries().clear();
    showCount();
}
