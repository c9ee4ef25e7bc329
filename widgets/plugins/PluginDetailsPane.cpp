#include "widgets/plugins/PluginDetailsPane.h"

#include "bundles/KRPluginBundle.h"
#include "localization/Localizable.h"
#include "widgets/PluginText.h"
#include "widgets/Symbols.h"
#include "widgets/ToneLabel.h"
#include "widgets/plugins/CommandList.h"
#include "widgets/plugins/PluginIcon.h"
#include "widgets/plugins/PluginUpdateRow.h"

#include <QDesktopServices>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

constexpr int iconSide = 64;

ToneLabel *makeLabel(const char *name, std::optional<Tone> tone = std::nullopt)
{
    auto *const label = new ToneLabel(tone);
    label->setObjectName(QString::fromLatin1(name));
    label->setWordWrap(true);
    // A single word of a thousand letters must not make the window as wide.
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

void setTextOrHide(QLabel &label, const QString &text)
{
    label.setText(text);
    label.setVisible(!text.isEmpty());
}

QString originText(const KRPluginBundle &plugin)
{
    const auto version = Localizable::tr("Version %1").arg(plainLine(plugin.version().value_or(QString())));
    const auto author = plainLine(plugin.author().value_or(QString()));
    return author.isEmpty() ? version : version + QStringLiteral("  ·  ") + author;
}

/// Which versions of the application the plug-in says that it works with.
QString versionsText(const KRPluginBundle &plugin)
{
    const auto lowest = plainLine(plugin.compatibleVersion().value_or(QString()));
    const auto highest = plainLine(plugin.maximumCompatibleVersion().value_or(QString()));
    if (!lowest.isEmpty() && !highest.isEmpty())
        return Localizable::tr("For versions %1 to %2 of this application").arg(lowest, highest);
    if (!lowest.isEmpty())
        return Localizable::tr("For version %1 of this application and later").arg(lowest);
    return {};
}

} // namespace

PluginDetailsPane::PluginDetailsPane(QWidget *parent)
    : QWidget(parent)
    , m_area(new QScrollArea)
    , m_hint(makeLabel("Hint", Tone::Quiet))
    , m_icon(new QLabel)
    , m_name(makeLabel("PluginName"))
    , m_origin(makeLabel("PluginOrigin", Tone::Quiet))
    , m_versions(makeLabel("PluginVersions", Tone::Quiet))
    , m_warning(makeLabel("PluginWarning", Tone::Warning))
    , m_description(makeLabel("PluginDescription"))
    , m_update(new PluginUpdateRow)
    , m_commands(new CommandList)
    , m_homepage(new QPushButton(Localizable::tr("Open &Homepage")))
{
    m_hint->setText(Localizable::tr("Select a plug-in to see what it does."));
    m_hint->setAlignment(Qt::AlignCenter);
    m_warning->setText(Localizable::tr("This version is known not to work with this application."));
    auto *const content = new QWidget;
    auto *const layout = new QVBoxLayout(content);
    layout->setContentsMargins(20, 18, 20, 18);
    layout->setSpacing(14);
    layout->addWidget(makeHead());
    layout->addWidget(m_warning);
    layout->addWidget(m_update);
    layout->addWidget(m_description);
    layout->addWidget(m_commands);
    layout->addWidget(m_versions);
    layout->addStretch(1);
    layout->addWidget(makeButtons());

    m_area->setWidgetResizable(true);
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_area->setFocusPolicy(Qt::NoFocus);
    m_area->setWidget(content);
    auto *const outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(m_hint, 1);
    outer->addWidget(m_area, 1);
    connect(m_update, &PluginUpdateRow::updateRequested, this, &PluginDetailsPane::updateRequested);
    connect(m_update, &PluginUpdateRow::cancelRequested, this, &PluginDetailsPane::cancelUpdateRequested);
    setPlugin(nullptr, Compatibility::Compatible);
}

QWidget *PluginDetailsPane::makeHead()
{
    constexpr qreal titleRatio = 1.45;
    auto font = m_name->font();
    font.setPointSizeF(font.pointSizeF() * titleRatio);
    font.setWeight(QFont::DemiBold);
    m_name->setFont(font);
    m_icon->setFixedSize(iconSide, iconSide);
    auto *const head = new QWidget;
    auto *const row = new QHBoxLayout(head);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(16);
    row->addWidget(m_icon, 0, Qt::AlignTop);
    auto *const texts = new QVBoxLayout;
    texts->setSpacing(3);
    texts->addStretch(1);
    texts->addWidget(m_name);
    texts->addWidget(m_origin);
    texts->addStretch(1);
    row->addLayout(texts, 1);
    return head;
}

QWidget *PluginDetailsPane::makeButtons()
{
    m_homepage->setObjectName(QStringLiteral("HomepageButton"));
    connect(m_homepage, &QPushButton::clicked, this, &PluginDetailsPane::openHomepage);
    auto *const bar = new QWidget;
    auto *const row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    const auto add = [this, row](Symbol symbol, const QString &text, const char *name, auto requested) {
        auto *const button = new QPushButton(symbolIcon(symbol), text);
        button->setObjectName(QString::fromLatin1(name));
        connect(button, &QPushButton::clicked, this, requested);
        row->addWidget(button);
        return button;
    };
    m_edit = add(Symbol::Edit, Localizable::tr("&Edit"), "EditButton", &PluginDetailsPane::editRequested);
    add(Symbol::Folder, Localizable::tr("&Show in Folder"), "FolderButton", &PluginDetailsPane::showInFolderRequested);
    row->addWidget(m_homepage);
    row->addStretch(1);
    add(Symbol::Trash, Localizable::tr("&Remove…"), "RemoveButton", &PluginDetailsPane::removeRequested);
    return bar;
}

QUrl PluginDetailsPane::homepage(const KRPluginBundle &plugin)
{
    const auto url = plugin.homepageURL();
    const auto scheme = url.scheme().toLower();
    const bool isWeb = scheme == u"http" || scheme == u"https";
    return isWeb && url.isValid() && !url.host().isEmpty() ? url : QUrl();
}

void PluginDetailsPane::setPlugin(const std::shared_ptr<KRPluginBundle> &plugin, Compatibility compatibility)
{
    m_plugin = plugin;
    m_hint->setVisible(!plugin);
    m_area->setVisible(plugin != nullptr);
    m_commands->setPlugin(plugin.get());
    if (!plugin)
        return;
    m_icon->setPixmap(pluginIcon(*plugin).pixmap(QSize(iconSide, iconSide), devicePixelRatioF()));
    m_name->setText(plainLine(plugin->name().value_or(QString())));
    m_origin->setText(originText(*plugin));
    setTextOrHide(*m_versions, versionsText(*plugin));
    m_warning->setVisible(compatibility == Compatibility::Incompatible);
    setTextOrHide(*m_description, plainLines(plugin->pluginDescription().value_or(QString())).trimmed());
    const auto url = homepage(*plugin);
    m_homepage->setVisible(!url.isEmpty());
    m_homepage->setToolTip(plainToolTip(url.toDisplayString()));
}

void PluginDetailsPane::showUpdate(const PluginUpdateState &state)
{
    m_update->setState(state);
}

void PluginDetailsPane::openHomepage()
{
    if (m_plugin && !homepage(*m_plugin).isEmpty())
        QDesktopServices::openUrl(homepage(*m_plugin));
}
