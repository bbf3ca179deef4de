#include "filetypes/version/version_compare_widget.h"

#include "filetypes/version/version_rows.h"
#include "filetypes/version/version_words.h"
#include "session/fields/fields_bar.h"

namespace velmora {

namespace {

Sides<PairInputs::Field> fields()
{
    const QString filter = Velmora::tr("Programs and libraries (*.exe *.dll *.sys *.ocx *.so *.so.*)") +
                           QStringLiteral(";;") + Velmora::tr("All files (*.*)");
    return {{Velmora::tr("Left program or library..."), Velmora::tr("Select left file"), filter},
            {Velmora::tr("Right program or library..."), Velmora::tr("Select right file"), filter}};
}

} // namespace

VersionCompareWidget::VersionCompareWidget(SessionHost &host, QWidget *parent)
    : FieldsSession(
          host,
          [](QWidget *session) {
              return Parts{new FieldsBar(session), fields(), std::make_unique<VersionRows>(),
                           Velmora::tr("Choose two programs or libraries, then click Compare. Files can be dropped "
                                       "here, too.")};
          },
          parent)
{}

void VersionCompareWidget::compare(const Sides<QString> &files)
{
    run(
        [files](const CancelFlag &cancel, Progress &progress) {
            Sides<ProgramReading> readings;
            for (const Side side : bothSides) {
                progress.report(0, side == Side::Left ? 0 : 1, 2, files[side]);
                readings[side] = loadProgram(files[side], cancel);
            }
            return readings;
        },
        [this, files](const Sides<ProgramReading> &readings) { take(files, readings); });
}

void VersionCompareWidget::take(const Sides<QString> &files, const Sides<ProgramReading> &readings)
{
    for (const Side side : bothSides) {
        if (!readings[side].ok()) {
            showFailure(faultText(readings[side], files[side]), readings[side].detail);
            return;
        }
    }
    const ProgramFacts &left = readings.left.facts;
    const ProgramFacts &right = readings.right.facts;
    QStringList verdict{verdictText(judgeVersions(left, right), left, right), machineText(left, right),
                        signerText(left, right)};
    verdict.removeAll(QString());
    const qsizetype told = verdict.size();
    for (const Side side : bothSides)
        verdict.append(damageText(readings[side].facts, files[side]));
    verdict.removeAll(QString());
    const bool isDamaged = verdict.size() > told;
    showRows(files, std::make_unique<VersionRows>(compareVersions(left, right)), verdict.join(u'\n'),
             isDamaged ? NoticeBar::Tone::Warning : NoticeBar::Tone::Verdict);
}

} // namespace velmora
