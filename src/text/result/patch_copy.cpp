#include "text/result/patch_copy.h"

#include "core/output_buffer.h"
#include "session/fault_text.h"
#include "session/pane/row_layout.h"
#include "session/translate.h"
#include "text/engine/text_patch.h"
#include "text/view/diff_document.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>

namespace velmora {

namespace {

struct Patch {
    QString text;
    qint64 changes = 0;
};

Patch makePatch(const PatchCopy::Content &content, RowRange rows, const CancelFlag &cancel)
{
    const DiffDocument &document = *content.document;
    const TextLines left = content.left->toLines();
    const TextLines right = content.right->toLines();
    const bool isWhole = rows.first == 0 && rows.end() == document.rowCount();
    std::vector<PatchChange> changes = byteChanges(document.rows(), left, right);
    if (cancel.isCancelled())
        return {};
    if (!isWhole) {
        const auto before = [&document](qsizetype row, Side side) { return document.linesBefore(row, side); };
        changes = changesWithin(changes, {before(rows.first, Side::Left), before(rows.end(), Side::Left),
                                          before(rows.first, Side::Right), before(rows.end(), Side::Right)});
    }
    QBuffer device;
    device.open(QIODevice::WriteOnly);
    OutputBuffer output(device);
    writePatch(output, changes, content.paths.left, left, content.paths.right, right);
    if (cancel.isCancelled() || !output.finish())
        return {};
    return {QString::fromUtf8(device.data()), qint64(changes.size())};
}

} // namespace

PatchCopy::PatchCopy(QObject *parent) : QObject(parent) {}

void PatchCopy::copy(Content content, RowRange rows)
{
    m_runner.start(
        [content = std::move(content), rows](const CancelFlag &cancel, Progress &) {
            return makePatch(content, rows, cancel);
        },
        [this](RunOutcome<Patch> &&outcome) {
            if (outcome.end != RunEnd::Done) {
                Q_EMIT message(
                    outcome.end == RunEnd::Cancelled
                        ? Velmora::tr("Cancelled")
                        : faultText(outcome.fault, Velmora::tr("Not enough memory to copy the differences")));
            } else if (outcome.value->changes == 0) {
                Q_EMIT message(Velmora::tr("There is no difference to copy"));
            } else {
                QGuiApplication::clipboard()->setText(outcome.value->text);
                Q_EMIT message(Velmora::tr("Copied as unified diff: %1 changed places").arg(outcome.value->changes));
            }
        });
}

} // namespace velmora
