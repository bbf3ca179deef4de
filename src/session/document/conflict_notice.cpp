#include "session/document/conflict_notice.h"

#include "core/visible_name.h"
#include "session/session_host.h"
#include "session/session_record.h"
#include "session/translate.h"

#include <QFileInfo>

namespace velmora {

ConflictNotice::ConflictNotice(SessionHost &host, QWidget *parent) : NoticeBar(QStringLiteral("conflictBar"), parent)
{
    setAction(Velmora::tr("&Resolve..."), Velmora::tr("Open the file as a merge, in a tab of its own"));
    setClosable(Velmora::tr("Hide this remark"));
    connect(this, &NoticeBar::actionWanted, this, [this, &host] {
        host.openSession(host.kindFor(SessionHost::Purpose::MergeTexts), {m_path, {}, {}});
    });
}

void ConflictNotice::offer(const QString &path)
{
    m_path = path;
    if (path.isEmpty())
        clear();
    else
        tell(Velmora::tr("%1 has conflict markers.").arg(visibleName(QFileInfo(path).fileName())), Tone::Remark);
}

} // namespace velmora
