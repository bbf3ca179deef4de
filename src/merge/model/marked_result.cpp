#include "merge/model/marked_result.h"

namespace velmora {

namespace {

constexpr qsizetype markerLength = 7;

QByteArray markerLine(char sign, const QByteArray &label)
{
    const QByteArray marker(markerLength, sign);
    return label.isEmpty() ? marker : marker + ' ' + label;
}

/// Puts the lines of a result together, each with an end where others follow.
class MarkedWriter {
public:
    explicit MarkedWriter(const MergeTexts &texts) : m_texts(texts) {}

    void lines(const std::vector<LineRun> &runs) { m_texts.append(m_runs, runs); }
    void lines(MergeSource source, const LineRange &range) { m_texts.append(m_runs, source, range); }
    void marker(const QByteArray &line)
    {
        TextLinesBuilder builder;
        builder.append({line.constData(), std::size_t(line.size())}, m_texts.usualEnd());
        m_texts.append(m_runs, LineRun{std::make_shared<const TextLines>(builder.take()), 0, 1});
    }
    [[nodiscard]] TextLines take() { return EditSnapshot(std::move(m_runs)).toLines(); }

private:
    const MergeTexts &m_texts;
    std::vector<LineRun> m_runs;
};

} // namespace

TextLines withConflictMarkers(const MergeTexts &texts, const std::vector<MergePart> &parts, const EditSnapshot &result,
                              const MarkerLabels &labels)
{
    MarkedWriter writer(texts);
    qsizetype start = 0;
    for (const MergePart &part : parts) {
        if (part.isOpen()) {
            writer.marker(markerLine('<', labels.left));
            writer.lines(MergeSource::Left, part.of(MergeSource::Left));
            writer.marker(markerLine('|', labels.base));
            writer.lines(MergeSource::Base, part.of(MergeSource::Base));
            writer.marker(markerLine('=', {}));
            writer.lines(MergeSource::Right, part.of(MergeSource::Right));
            writer.marker(markerLine('>', labels.right));
        } else {
            writer.lines(result.runs(start, part.resultCount));
        }
        start += part.resultCount;
    }
    return writer.take();
}

} // namespace velmora
