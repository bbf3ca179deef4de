#include "core/safe_file.h"
#include "filetypes/registry/engine/reg_writer.h"
#include "filetypes/registry/engine/registry_patch.h"
#include "filetypes/registry/registry_compare_widget.h"
#include "filetypes/registry/registry_preview.h"
#include "session/dialogs.h"
#include "session/shown_path.h"

namespace velmora {

namespace {

QString fileFilter()
{
    return Velmora::tr("Registry entries (*.reg)") + QStringLiteral(";;") + Velmora::tr("All files (*.*)");
}

} // namespace

void RegistryCompareWidget::saveTree(const QString &title, const QString &name, std::function<RegistryTree()> make)
{
    const QString beside = liveKeyOf(m_places.left) ? QString() : m_places.left;
    Dialogs::instance().saveFile(
        this, title, besideFile(beside, name), fileFilter(), [this, make = std::move(make)](const QString &path) {
            run([make, path](const CancelFlag &, Progress &) { return saveFile(path, registryFile(make())); },
                [this, path](const SaveResult &saved) {
                    if (saved.ok())
                        status().showMessage(Velmora::tr("Saved %1").arg(shownPath(path)));
                    else
                        status().showFailure(Velmora::tr("Cannot write: %1").arg(shownPath(path)), saved.error);
                });
        });
}

void RegistryCompareWidget::savePatch(Side changed)
{
    const bool isLeft = changed == Side::Left;
    saveTree(isLeft ? Velmora::tr("Save what makes left into right") : Velmora::tr("Save what makes right into left"),
             isLeft ? QStringLiteral("left-to-right.reg") : QStringLiteral("right-to-left.reg"),
             [comparison = m_comparison, changed] { return registryPatch(*comparison, changed); });
}

void RegistryCompareWidget::saveSide(Side side)
{
    const bool isLeft = side == Side::Left;
    saveTree(isLeft ? Velmora::tr("Save the left side") : Velmora::tr("Save the right side"),
             isLeft ? QStringLiteral("left.reg") : QStringLiteral("right.reg"),
             [comparison = m_comparison, side] { return comparison->trees[side]; });
}

void RegistryCompareWidget::write(Side changed)
{
    const std::optional<LiveKey> key = liveKeyOf(m_places[changed]);
    if (!key || !m_live)
        return;
    const RegistryWriteOrder order{*key, m_comparison->trees[changed], registryPatch(*m_comparison, changed), {}};
    auto *preview = new RegistryPreview(order.patch, m_places[changed], this);
    preview->setAttribute(Qt::WA_DeleteOnClose);
    connect(preview, &QDialog::accepted, this, [this, order] { keepAndWrite(order); });
    preview->open();
}

void RegistryCompareWidget::keepAndWrite(const RegistryWriteOrder &order)
{
    Dialogs::instance().saveFile(
        this, Velmora::tr("Keep what is in the registry now"), QStringLiteral("registry-before.reg"), fileFilter(),
        [this, order](const QString &path) {
            RegistryWriteOrder kept = order;
            kept.keptPath = path;
            run([live = m_live, kept](const CancelFlag &cancel,
                                      Progress &progress) { return writeRegistry(*live, kept, cancel, progress); },
                [this, path](const RegistryWriteResult &result) { tellWritten(result, path); });
        });
}

void RegistryCompareWidget::tellWritten(const RegistryWriteResult &result, const QString &keptPath)
{
    using enum RegistryWriteResult::End;
    switch (result.end) {
    case Changed:
        status().showFailure(Velmora::tr("The key has changed since it was compared: nothing was written"),
                             result.error);
        return;
    case NotKept:
        status().showFailure(Velmora::tr("Cannot write: %1").arg(shownPath(keptPath)),
                             Velmora::tr("Nothing was written to the registry"));
        return;
    case Failed:
        status().showFailure(
            Velmora::tr("Writing ended at %1: what was there is in %2").arg(result.writing.failed, shownPath(keptPath)),
            result.error);
        return;
    case Done:
        break;
    }
    start();
}

} // namespace velmora
