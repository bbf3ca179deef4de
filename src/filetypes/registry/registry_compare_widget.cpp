#include "filetypes/registry/registry_compare_widget.h"

#include "filetypes/registry/noise_dialog.h"
#include "filetypes/registry/noise_settings.h"
#include "filetypes/registry/registry_bar.h"
#include "filetypes/registry/registry_encodings.h"
#include "filetypes/registry/registry_rows.h"
#include "filetypes/registry/registry_words.h"
#include "session/frame/path_edit.h"
#include "session/list/tree_model.h"
#include "session/list/tree_view.h"

#include <QHeaderView>
#include <QJsonObject>
#include <QSplitter>

namespace velmora {

namespace {

constexpr QLatin1String leftEncodingKey("leftEncoding");
constexpr QLatin1String rightEncodingKey("rightEncoding");

Sides<PairInputs::Field> fields(bool hasLive)
{
    const QString filter =
        Velmora::tr("Registry entries (*.reg)") + QStringLiteral(";;") + Velmora::tr("All files (*.*)");
    return {
        {hasLive ? Velmora::tr("Left .reg file, or a key such as HKCU\\Software") : Velmora::tr("Left .reg file..."),
         Velmora::tr("Select left file"), filter},
        {hasLive ? Velmora::tr("Right .reg file, or a key such as 32:HKLM\\Software")
                 : Velmora::tr("Right .reg file..."),
         Velmora::tr("Select right file"), filter}};
}

/// What the tree shows before there are keys.
std::unique_ptr<RegistryKeyTree> noKeys()
{
    return std::make_unique<RegistryKeyTree>(nullptr, RegistryKeyNodes());
}

} // namespace

RegistryCompareWidget::RegistryCompareWidget(SessionHost &host, QWidget *parent, LiveRegistry *live)
    : RegistryCompareWidget(host, parent, live, m_bar)
{}

RegistryCompareWidget::RegistryCompareWidget(SessionHost &host, QWidget *parent, LiveRegistry *live, RegistryBar *&bar)
    : FieldsSession(
          host,
          [live, &bar](QWidget *session) {
              bar = new RegistryBar(session);
              return Parts{bar, fields(live != nullptr), std::make_unique<RegistryRows>(),
                           Velmora::tr("Choose two .reg files, then click Compare. Files can be dropped here, too.")};
          },
          parent),
      m_bar(bar),
      m_encodings(new RegistryEncodings(*bar->encoding, this)),
      m_live(live),
      m_keys(new TreeModel(noKeys(), this)),
      m_view(new TreeView(*m_keys, this))
{
    m_view->setObjectName(QStringLiteral("registryKeys"));
    m_view->setAccessibleName(Velmora::tr("Registry keys"));
    m_view->setFrameShape(QFrame::NoFrame);
    views().insertWidget(0, m_view);
    views().setStretchFactor(0, 1);
    views().setStretchFactor(1, 3);
    constexpr int leastWidth = 210; // shows a few letters of a key some levels down
    m_view->setMinimumWidth(leastWidth);
    views().setSizes({300, 700});
    QHeaderView &header = *m_view->horizontalHeader();
    constexpr int room = 24; // for the sign of the order
    header.setSectionResizeMode(0, QHeaderView::Stretch);
    header.setSectionResizeMode(1, QHeaderView::Fixed);
    header.resizeSection(1, header.fontMetrics().horizontalAdvance(QStringLiteral("0,000")) + room);
    list().setWiderSearch(m_bar->searchAllKeys, Velmora::tr("No row of this key holds these words."));
    connectBar();
    allowCommands();
}

void RegistryCompareWidget::connectBar()
{
    const auto on = [this](QAction *action, auto slot) { connect(action, &QAction::triggered, this, slot); };
    on(m_bar->noise, &RegistryCompareWidget::onNoise);
    for (QAction *view : {m_bar->showAll, m_bar->showDifferences, m_bar->showIdentical})
        on(view, &RegistryCompareWidget::showKeysOfView);
    on(m_bar->searchAllKeys, [this] { m_view->goToNode(m_tree->firstBranch()); });
    on(m_bar->savePatch, [this] { savePatch(Side::Left); });
    on(m_bar->saveReturn, [this] { savePatch(Side::Right); });
    on(m_bar->saveLeft, [this] { saveSide(Side::Left); });
    on(m_bar->saveRight, [this] { saveSide(Side::Right); });
    on(m_bar->writeLeft, [this] { write(Side::Left); });
    on(m_bar->writeRight, [this] { write(Side::Right); });
    connect(m_encodings, &RegistryEncodings::chosen, this, [this] { start(); });
    connect(m_view, &TreeView::placeChanged, this, &RegistryCompareWidget::showKey);
    connect(m_view, &TreeView::openWanted, this, [this] { list().setFocus(); });
}

SessionPaths RegistryCompareWidget::paths() const
{
    SessionPaths paths = FieldsSession::paths();
    for (QString *path : {&paths.left, &paths.right}) {
        const Side side = path == &paths.left ? Side::Left : Side::Right;
        // Names of keys hold slashes, which a path would take for separators.
        if (const std::optional<LiveKey> key = liveKeyOf(inputs().at(side).lineEdit().text()))
            *path = liveKeyText(*key);
    }
    return paths;
}

void RegistryCompareWidget::setPaths(const SessionPaths &paths)
{
    FieldsSession::setPaths(paths);
    for (const Side side : bothSides) {
        const QString &path = side == Side::Left ? paths.left : paths.right;
        if (liveKeyOf(path))
            inputs().at(side).lineEdit().setText(path);
    }
}

QJsonObject RegistryCompareWidget::options() const
{
    QJsonObject options = FieldsSession::options();
    const SessionPaths places = paths();
    for (const auto &[key, place] :
         {std::pair(leftEncodingKey, places.left), std::pair(rightEncodingKey, places.right)}) {
        if (const TextEncoding encoding = m_encodings->of(place); !encoding.isAutomatic())
            options.insert(key, encoding.name());
    }
    return options;
}

void RegistryCompareWidget::setOptions(const QJsonObject &options)
{
    FieldsSession::setOptions(options);
    const SessionPaths places = paths();
    for (const auto &[key, place] :
         {std::pair(leftEncodingKey, places.left), std::pair(rightEncodingKey, places.right)})
        m_encodings->choose(place, TextEncoding::fromName(options.value(key).toString()));
    showKeysOfView();
}

void RegistryCompareWidget::refreshTheme()
{
    FieldsSession::refreshTheme();
    m_keys->refresh();
}

void RegistryCompareWidget::compare(const Sides<QString> &places)
{
    const Sides<RegistryPlace> sides{{places.left, m_encodings->of(places.left)},
                                     {places.right, m_encodings->of(places.right)}};
    run(
        [sides, live = m_live, noise = storedNoiseProfiles()](const CancelFlag &cancel, Progress &progress) {
            return compareRegistrySides(sides, live, noise, cancel, progress);
        },
        [this, places](RegistryResult &&result) { take(places, std::move(result)); });
}

void RegistryCompareWidget::take(const Sides<QString> &places, RegistryResult &&result)
{
    QStringList remarks;
    for (const Side side : bothSides) {
        if (!result.readings[side].ok()) {
            showFailure(faultText(result.readings[side], places[side]), result.readings[side].detail);
            return;
        }
        remarks += remarkTexts(result.readings[side], places[side]);
    }
    m_encodings->show(places, {result.readings.left.charset, result.readings.right.charset});
    m_comparison = std::move(result.comparison);
    m_places = places;
    showTree(std::move(result.nodes));
    m_bar->searchAllKeys->setEnabled(false);
    const auto tone = remarks.isEmpty() ? NoticeBar::Tone::Verdict : NoticeBar::Tone::Warning;
    remarks.prepend(verdictText(*m_comparison));
    for (const Side side : bothSides)
        remarks.append(charsetText(result.readings[side], places[side]));
    remarks.removeAll(QString());
    showRows(places, rowsOf(m_tree->firstBranch()), remarks.join(u'\n'), tone);
    allowCommands();
}

void RegistryCompareWidget::showTree(RegistryKeyNodes &&nodes)
{
    auto tree = std::make_unique<RegistryKeyTree>(m_comparison, std::move(nodes));
    m_tree = tree.get();
    m_tree->setView(rows().view());
    const QSignalBlocker silent(m_view); // the rows are shown once, with the verdict
    m_keys->setTree(std::move(tree));
    m_view->goToNode(m_tree->firstBranch());
}

std::unique_ptr<const RowSource> RegistryCompareWidget::rowsOf(qint32 node) const
{
    const RegistryKeyNode &key = m_tree->node(node);
    return std::make_unique<RegistryRows>(m_comparison, key.firstRow, key.endRow, key.path);
}

void RegistryCompareWidget::showKey()
{
    const qint32 node = m_tree ? m_view->currentNode() : -1;
    if (node < 0)
        return;
    m_bar->searchAllKeys->setEnabled(node > m_tree->firstBranch());
    list().setResult(rowsOf(node));
}

void RegistryCompareWidget::showKeysOfView()
{
    if (!m_tree)
        return;
    m_tree->setView(rows().view());
    const QSignalBlocker silent(m_view); // the same key is shown
    m_keys->update();
}

void RegistryCompareWidget::allowCommands()
{
    const bool isThere = m_comparison != nullptr;
    const bool differs = isThere && m_comparison->counts.differences() > 0;
    for (QAction *action : {m_bar->savePatch, m_bar->saveReturn})
        action->setEnabled(differs);
    for (QAction *action : {m_bar->saveLeft, m_bar->saveRight})
        action->setEnabled(isThere);
    m_bar->writeLeft->setEnabled(differs && m_live && liveKeyOf(m_places.left));
    m_bar->writeRight->setEnabled(differs && m_live && liveKeyOf(m_places.right));
}

void RegistryCompareWidget::onNoise()
{
    auto *dialog = new NoiseDialog(storedNoiseProfiles(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] {
        storeNoiseProfiles(dialog->profiles());
        if (m_comparison)
            start();
    });
    dialog->open();
}

} // namespace velmora
