#include "widgets/plugins/PluginsToolBar.h"

#include "localization/Localizable.h"
#include "widgets/Symbols.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>

PluginsToolBar::PluginsToolBar(QWidget *parent)
    : QWidget(parent)
    , m_search(new QLineEdit)
    , m_check(new QPushButton(symbolIcon(Symbol::Refresh), Localizable::tr("Check for U&pdates")))
    , m_updateAll(new QPushButton(symbolIcon(Symbol::Download), Localizable::tr("Update &All")))
    , m_cancelAll(new QPushButton(symbolIcon(Symbol::Close), Localizable::tr("Cancel A&ll")))
{
    setUpSearch();
    m_check->setObjectName(QStringLiteral("CheckButton"));
    m_updateAll->setObjectName(QStringLiteral("UpdateAllButton"));
    m_cancelAll->setObjectName(QStringLiteral("CancelAllButton"));
    m_cancelAll->hide();
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(12, 10, 12, 10);
    row->addWidget(m_search);
    row->addStretch(1);
    row->addWidget(m_check);
    row->addWidget(m_updateAll);
    row->addWidget(m_cancelAll);
    row->addWidget(makeInstallButton());
    connect(m_check, &QPushButton::clicked, this, &PluginsToolBar::checkRequested);
    connect(m_updateAll, &QPushButton::clicked, this, &PluginsToolBar::updateAllRequested);
    connect(m_cancelAll, &QPushButton::clicked, this, &PluginsToolBar::cancelAllRequested);
}

void PluginsToolBar::setUpSearch()
{
    m_search->setObjectName(QStringLiteral("PluginSearch"));
    m_search->setPlaceholderText(Localizable::tr("Search"));
    m_search->setAccessibleName(Localizable::tr("Search plug-ins"));
    m_search->setClearButtonEnabled(true);
    m_search->addAction(symbolIcon(Symbol::Search), QLineEdit::LeadingPosition);
    m_search->setMinimumWidth(220);
    connect(m_search, &QLineEdit::textChanged, this, &PluginsToolBar::searchChanged);
}

QPushButton *PluginsToolBar::makeInstallButton()
{
    auto *const install = new QPushButton(symbolIcon(Symbol::Add), Localizable::tr("&Install"));
    install->setObjectName(QStringLiteral("InstallButton"));
    auto *const sources = new QMenu(install);
    sources->addAction(Localizable::tr("From an &Archive…"), this, &PluginsToolBar::chooseFiles);
    sources->addAction(Localizable::tr("From a &Folder…"), this, &PluginsToolBar::chooseFolder);
    install->setMenu(sources);
    return install;
}

void PluginsToolBar::chooseFiles()
{
    auto *const dialog = new QFileDialog(this, Localizable::tr("Install Plug-ins"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setNameFilter(Localizable::tr("Archives of plug-ins (*.zip)"));
    connect(dialog, &QFileDialog::filesSelected, this, &PluginsToolBar::installRequested);
    dialog->open();
}

void PluginsToolBar::chooseFolder()
{
    auto *const dialog = new QFileDialog(this, Localizable::tr("Install Plug-ins"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    connect(dialog, &QFileDialog::filesSelected, this, &PluginsToolBar::installRequested);
    dialog->open();
}

void PluginsToolBar::focusSearch()
{
    m_search->setFocus();
}

void PluginsToolBar::clearSearch()
{
    m_search->clear();
}

void PluginsToolBar::showChecking(bool isChecking)
{
    m_check->setEnabled(!isChecking);
}

void PluginsToolBar::showUpdates(qsizetype available, qsizetype underWay)
{
    m_updateAll->setEnabled(available > 0);
    m_updateAll->setVisible(underWay == 0 || available > 0);
    m_cancelAll->setVisible(underWay > 0);
}
