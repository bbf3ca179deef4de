#include "folder/sftp/sftp_bar.h"

#include "session/translate.h"

namespace velmora {

SftpBar::SftpBar(QWidget *session) : ListBar(session)
{
    addCompare(Velmora::tr("Compare the local folder with the remote one"));
    addCancel(Velmora::tr("Cancel what is being done"));
    addSeparator();
    addListCommands();
    addSeparator();
    open = add({"openAction",
                Velmora::tr("Fetch and compare"),
                QStringLiteral("open.png"),
                {},
                Velmora::tr("Fetch the remote file of the current row and compare it with the local one (Return)")});
    compareContents = add({"compareContentsAction",
                           Velmora::tr("Compare contents"),
                           QStringLiteral("check.png"),
                           {},
                           Velmora::tr("Compare the selected files by SHA-256, which the host computes of its own")});
    fetch = add({"fetchAction",
                 Velmora::tr("Fetch files..."),
                 QStringLiteral("load.png"),
                 {},
                 Velmora::tr("Copy the selected remote files into a folder of this computer")});
    refreshTheme();
}

} // namespace velmora
