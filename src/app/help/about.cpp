#include "app/help/about.h"

#include "app/start/build_stamp.h"
#include "session/translate.h"

#include <QApplication>
#include <QMessageBox>

namespace velmora {

QString applicationVersion()
{
    return QStringLiteral("%1.%2.%3").arg(VELMORA_VERSION_MAJOR).arg(VELMORA_VERSION_MINOR).arg(VELMORA_VERSION_PATCH);
}

QString aboutText()
{
    const QString features = Velmora::tr("<h2>Velmora</h2><p>File and folder comparison for Windows.</p>"
                                         "<ul>"
                                         "<li>Text compare with syntax highlighting</li>"
                                         "<li>Folder structure and content compare</li>"
                                         "<li>Binary hex compare</li>"
                                         "<li>Table (CSV/TSV) compare</li>"
                                         "<li>Image compare</li>"
                                         "<li>Folder sync and three-way merge</li>"
                                         "<li>Git, archives, SFTP/SSH</li>"
                                         "<li>Registry, version info, checksums</li>"
                                         "<li>Duplicates, snapshots, disk usage</li>"
                                         "<li>Environment, services, startup items</li>"
                                         "</ul>");
    const QString version = QStringLiteral("%1 %2").arg(Velmora::tr("Version"), applicationVersion());
    const QString build = Velmora::tr("build %1").arg(buildStamp());
    return features + QStringLiteral("<p>%1<br/>%2<br/>Qt %3</p>").arg(version, build, QString::fromLatin1(qVersion()));
}

void showAbout(QWidget *parent)
{
    auto *box = new QMessageBox(parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(Velmora::tr("About Velmora"));
    box->setTextFormat(Qt::RichText);
    box->setText(aboutText());
    box->setIconPixmap(QApplication::windowIcon().pixmap(QSize(64, 64), parent->devicePixelRatioF()));
    box->open();
}

} // namespace velmora
