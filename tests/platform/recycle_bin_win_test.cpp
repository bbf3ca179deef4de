#include "platform/file_layer.h"
#include "platform/raw_file.h"
#include "support/test_main.h"

#include <QDir>
#include <QTemporaryDir>
#include <QUuid>

#include <windows.h>
#include <shlobj.h>
#include <shlwapi.h>

using namespace velmora;
using namespace velmora::test;

namespace {

/// What the shell shows in its recycle bin.
QStringList shownInBin()
{
    QStringList names;
    ITEMIDLIST *place = nullptr;
    IShellFolder *desktop = nullptr;
    void *object = nullptr;
    if (FAILED(::SHGetFolderLocation(nullptr, CSIDL_BITBUCKET, nullptr, 0, &place)) ||
        FAILED(::SHGetDesktopFolder(&desktop)) ||
        FAILED(desktop->BindToObject(place, nullptr, IID_IShellFolder, &object)))
        return names;
    auto *bin = static_cast<IShellFolder *>(object);
    IEnumIDList *list = nullptr;
    if (bin->EnumObjects(nullptr, SHCONTF_FOLDERS | SHCONTF_NONFOLDERS | SHCONTF_INCLUDEHIDDEN, &list) == S_OK) {
        ITEMIDLIST *item = nullptr;
        while (list->Next(1, &item, nullptr) == S_OK) {
            STRRET name{};
            wchar_t *text = nullptr;
            if (SUCCEEDED(bin->GetDisplayNameOf(item, SHGDN_NORMAL, &name)) &&
                SUCCEEDED(::StrRetToStrW(&name, item, &text)))
                names.append(QString::fromWCharArray(text));
            ::CoTaskMemFree(text);
            ::CoTaskMemFree(item);
        }
        list->Release();
    }
    bin->Release();
    desktop->Release();
    ::CoTaskMemFree(place);
    return names;
}

} // namespace

class RecycleBinTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))); }
    void cleanupTestCase() { ::CoUninitialize(); }

    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_root = QDir(m_folder->path()).canonicalPath();
        FileError error;
        m_handle = FileLayer::native().openRoot(m_root, error);
        QVERIFY2(m_handle, qPrintable(error.reason));
    }
    void cleanup()
    {
        m_handle.reset();
        QVERIFY(removeRawTree(m_root));
    }

    void theShellShowsWhatWasRecycled_data()
    {
        QTest::addColumn<bool>("isFolder");
        QTest::addColumn<QString>("suffix");
        QTest::newRow("file") << false << QStringLiteral(".txt");
        QTest::newRow("name with blanks and other letters") << false << QStringLiteral(" ä 中.txt");
        QTest::newRow("folder") << true << QString();
        QTest::newRow("web page without its folder") << false << QStringLiteral(".htm");
    }
    void theShellShowsWhatWasRecycled()
    {
        QFETCH(bool, isFolder);
        QFETCH(QString, suffix);
        const QString stem = QUuid::createUuid().toString(QUuid::WithoutBraces);
        const QString name = stem + suffix;
        QVERIFY(makeRawFolder(path(stem + QLatin1String("_files"))));
        if (isFolder) {
            QVERIFY(makeRawFolder(path(name)));
            QVERIFY(makeRawFile(path(name + QLatin1String("/inside")), "kept"));
        } else {
            QVERIFY(makeRawFile(path(name), "kept"));
        }
        const RecycleResult recycled = m_handle->recycle(name, {});
        QVERIFY2(!recycled.error.isError(), qPrintable(recycled.error.reason));
        QCOMPARE(entries(), QStringList(stem + QLatin1String("_files")));
        const QStringList shown = shownInBin();
        QVERIFY2(shown.contains(name) || shown.contains(stem), qPrintable(shown.join(u'\n')));
        if (!recycled.binPath.isEmpty()) {
            QVERIFY(!FileLayer::native()
                         .restore(recycled.binPath, *m_handle, name, [](const NodeState &) { return true; })
                         .isError());
            QVERIFY(!shownInBin().contains(name));
        }
    }

    /// The shell would drop what ends the name, and recycle the neighbour; or know nothing of so long a path.
    void whatTheShellWouldMistakeStays()
    {
        QVERIFY(makeRawFile(path(QStringLiteral("ends")), "neighbour"));
        QStringList kept{QStringLiteral("ends"), QStringLiteral("ends."), QStringLiteral("ends "),
                         QStringLiteral("nul"), QString(250, u'x')};
        for (const QString &name : kept.mid(1)) {
            QVERIFY2(makeRawFile(path(name), "kept"), qPrintable(name));
            const RecycleResult recycled = m_handle->recycle(name, {});
            QVERIFY2(recycled.error.kind == FileErrorKind::Unsupported, qPrintable(name));
            QVERIFY(!recycled.error.reason.isEmpty());
        }
        QStringList found;
        QVERIFY(!m_handle
                     ->list([&found](const QString &name, const NodeState &) {
                         found.append(name);
                         return true;
                     })
                     .isError());
        found.sort();
        kept.sort();
        QCOMPARE(found, kept);
        QCOMPARE(m_handle->recycle(QStringLiteral("missing"), {}).error.kind, FileErrorKind::Missing);
    }

    void whatIsInUseStays()
    {
        const QString name = QStringLiteral("held");
        QFile held(path(name));
        QVERIFY(held.open(QIODevice::WriteOnly)); // lets nobody delete it
        const RecycleResult recycled = m_handle->recycle(name, {});
        QVERIFY(recycled.error.isError());
        QVERIFY(recycled.error.kind != FileErrorKind::Missing);
        QCOMPARE(entries(), QStringList(name));
    }

private:
    [[nodiscard]] QString path(const QString &name) const { return m_root + u'/' + name; }
    [[nodiscard]] QStringList entries() const
    {
        return QDir(m_root).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<FolderHandle> m_handle;
    QString m_root;
};

VELMORA_TEST(RecycleBinTest)
#include "recycle_bin_win_test.moc"
