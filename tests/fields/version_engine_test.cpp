#include "filetypes/version/engine/file_version.h"
#include "filetypes/version/engine/program_file.h"
#include "filetypes/version/engine/version_compare.h"
#include "support/files.h"
#include "support/made_program.h"
#include "support/test_main.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTest>

using namespace velmora;
using namespace velmora::test;

namespace {

QByteArray der(int tag, const QByteArray &content)
{
    return QByteArray(1, char(tag)) + QByteArray(1, char(0x82)) + char(content.size() >> 8) + char(content.size()) +
           content;
}

QByteArray distinguishedName(const char *name)
{
    const QByteArray identifier = der(0x06, QByteArray::fromHex("550403"));
    return der(0x30, der(0x31, der(0x30, identifier + der(0x0c, name))));
}

QByteArray certificate(const char *subject, const QByteArray &serial)
{
    const QByteArray version = der(0xa0, der(0x02, "\x02"));
    return der(0x30, der(0x30, version + der(0x02, serial) + der(0x30, {}) + distinguishedName("Authority") +
                                   der(0x30, {}) + distinguishedName(subject)));
}

/// A signature with two certificates, made with the second.
QByteArray signature()
{
    const QByteArray chosen = der(0x30, distinguishedName("Authority") + der(0x02, "\x22"));
    const QByteArray info = der(0x31, der(0x30, der(0x02, "\x01") + chosen));
    const QByteArray certificates = der(0xa0, certificate("Other", "\x11") + certificate("Söhne AG", "\x22"));
    return der(0x30, der(0x06, "\x2a") +
                         der(0xa0, der(0x30, der(0x02, "\x01") + der(0x31, {}) + der(0x30, {}) + certificates + info)));
}

QString valueOf(const ProgramReading &reading, ProgramFact fact, const QString &item = {})
{
    for (const FactValue &value : reading.facts.values) {
        if (value.fact == fact && value.item == item)
            return value.value;
    }
    return QStringLiteral("(none)");
}

/// The version without reading the whole.
QString shortVersion(const QString &path)
{
    const std::unique_ptr<FileOpener> opener = FileAccess::native().makeOpener();
    const std::unique_ptr<OpenFile> file = opener->open(path, OpenHint::Unknown);
    return file ? readFileVersion(*file) : QStringLiteral("(cannot open)");
}

/// A library for a machine that puts the highest byte first.
QByteArray bigEndianLibrary(const QByteArray &id)
{
    QByteArray out(0x100, '\0');
    const auto put = [&out](int at, auto number) { qToBigEndian(number, out.data() + at); };
    out.replace(0, 7,
                QByteArray("\x7f"
                           "ELF\1\2\1"));
    put(16, quint16(3)), put(18, quint16(20)), put(24, quint32(0x1234)), put(28, quint32(52)), put(42, quint16(32));
    put(44, quint16(3));
    const quint32 segments[3][3] = {{1, 0, 0x100}, {2, 0x98, 0x28}, {4, 0xc0, 0x14}};
    for (int k = 0; k < 3; ++k) {
        put(52 + 32 * k, segments[k][0]), put(56 + 32 * k, segments[k][1]), put(60 + 32 * k, segments[k][1]);
        put(68 + 32 * k, segments[k][2]);
    }
    const quint32 dynamic[] = {5, 0xe0, 14, 1, 1, 9};
    for (int k = 0; k < 6; ++k)
        put(0x98 + 4 * k, dynamic[k]);
    put(0xc0, quint32(4)), put(0xc4, quint32(4)), put(0xc8, quint32(3));
    out.replace(0xcc, 4, QByteArray("GNU\0", 4)).replace(0xd0, 4, id);
    return out.replace(0xe1, 15, QByteArray("liba.so\0libb.so", 15));
}

} // namespace

class VersionEngineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsEveryTableOfALibrary()
    {
        MadeProgram program;
        program.signature = signature();
        const ProgramReading reading = readProgram(madeProgram(program));
        QVERIFY(reading.ok());
        QCOMPARE(reading.facts.damaged.size(), 0);
        const struct {
            ProgramFact fact;
            const char *item;
            const char *value;
        } expected[] = {
            {ProgramFact::FileVersion, "", "1.2.3.4"},
            {ProgramFact::VersionFlags, "", "PRERELEASE (0x2)"},
            {ProgramFact::VersionType, "", "DLL (0x2)"},
            {ProgramFact::VersionString, "040904B0 CompanyName", "Grün & Söhne"},
            {ProgramFact::VersionTranslation, "", "040904B0"},
            {ProgramFact::Format, "", "PE32+"},
            {ProgramFact::Machine, "", "AMD64 (0x8664)"},
            {ProgramFact::Subsystem, "", "WINDOWS_CUI (0x3)"},
            {ProgramFact::LinkTime, "", "2021-01-14T08:25:36Z (0x60000000)"},
            {ProgramFact::ImageBase, "", "0x180000000"},
            {ProgramFact::EntryPoint, "", "0x1000"},
            {ProgramFact::Import, "KERNEL32.dll", "#7\nSleep"},
            {ProgramFact::DebugIdentity, "", "{33323130-3534-3736-3839-616263646566} 3"},
            {ProgramFact::DebugFile, "", "a.pdb"},
            {ProgramFact::Signer, "", "Söhne AG"},
            {ProgramFact::SectionSize, ".text", "6"},
        };
        for (const auto &[fact, item, value] : expected)
            QCOMPARE(valueOf(reading, fact, word(item)), word(value));
        for (const FactValue &value : reading.facts.values) {
            if (value.fact == ProgramFact::FileVersion) // a fact says where it stands
                QCOMPARE(qFromLittleEndian<quint32>(madeProgram(program).constData() + value.offset), 0x00010002U);
        }
    }

    void findsTheVersionWithoutReadingTheWhole()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(word("a.dll"));
        // Its resources lie behind more than the headers may be.
        ByteBuilder made{madeProgram()};
        constexpr qsizetype headerOfResources = 0x58 + 240 + 2 * 40;
        const quint32 place = 300'000;
        made.put(headerOfResources + 20, place);
        made.fillTo(place).add(madeProgram().mid(0x600));
        const QByteArray whole = made.bytes;
        QVERIFY(makeFile(path, whole));
        QCOMPARE(shortVersion(path), word("1.2.3.4"));
        for (const qsizetype size :
             {qsizetype(0), qsizetype(1), qsizetype(0x100), qsizetype(0x300), whole.size() - 1}) {
            QVERIFY(makeFile(path, whole.first(size)));
            QVERIFY(shortVersion(path) == QString() || shortVersion(path) == word("1.2.3.4"));
        }
        QDir libraries(word("/usr/lib/x86_64-linux-gnu/wine/x86_64-windows"), word("m*.dll"));
        for (const QFileInfo &library : libraries.entryInfoList()) {
            const QString version = shortVersion(library.filePath());
            const QString read = valueOf(loadProgram(library.filePath()), ProgramFact::FileVersion);
            QCOMPARE(version.isEmpty() ? word("(none)") : version, read);
        }
    }

    void readsLibrariesOfOtherMachines()
    {
        const ProgramReading reading = readProgram(bigEndianLibrary("\xab\xcd\xef\x01"));
        QVERIFY(reading.ok());
        QCOMPARE(valueOf(reading, ProgramFact::Format), word("ELF32 MSB"));
        QCOMPARE(valueOf(reading, ProgramFact::Machine), word("PPC (0x14)"));
        QCOMPARE(valueOf(reading, ProgramFact::Soname), word("liba.so"));
        QCOMPARE(valueOf(reading, ProgramFact::Needed, word("libb.so")), QString());
        QCOMPARE(valueOf(reading, ProgramFact::BuildId), word("abcdef01"));
        const ProgramReading other = readProgram(bigEndianLibrary("\xab\xcd\xef\x02"));
        QCOMPARE(judgeVersions(reading.facts, other.facts), VersionVerdict::SameButStamps);
    }

    /// The program that runs this, and where they are libraries that other linkers made.
    void readsRealPrograms()
    {
        const ProgramReading own = loadProgram(QCoreApplication::applicationFilePath());
        QVERIFY(own.ok());
        QVERIFY(own.facts.damaged.isEmpty());
        const bool isElf = own.facts.format == ProgramFacts::Format::Elf;
        const QString library = isElf ? word("libQt6Core.so.6") : word("Qt6Core.dll");
        QVERIFY(valueOf(own, isElf ? ProgramFact::Needed : ProgramFact::Import, library) != word("(none)"));
        // One with a checksum, as GNU's linker writes it, and one with resources in many languages.
        for (const auto &[path, fact] :
             {std::pair("/usr/lib/gcc/x86_64-w64-mingw32/12-posix/libstdc++-6.dll", ProgramFact::StoredChecksum),
              std::pair("/usr/lib/x86_64-linux-gnu/wine/x86_64-windows/shell32.dll", ProgramFact::FileVersion)}) {
            if (!QFile::exists(word(path)))
                continue;
            const ProgramReading reading = loadProgram(word(path));
            QVERIFY2(reading.ok() && reading.facts.damaged.isEmpty(), path);
            QVERIFY2(valueOf(reading, fact) != word("(none)"), path);
            if (fact == ProgramFact::StoredChecksum)
                QCOMPARE(valueOf(reading, fact), valueOf(reading, ProgramFact::ComputedChecksum));
            QVERIFY2(valueOf(reading, ProgramFact::Exports).size() > 100, path);
        }
    }

    void judges_data()
    {
        QTest::addColumn<QByteArray>("right");
        QTest::addColumn<int>("verdict");
        const auto row = [](const char *name, auto change, VersionVerdict verdict) {
            MadeProgram program;
            change(program);
            QTest::newRow(name) << madeProgram(program) << int(verdict);
        };
        row(
            "the same", [](MadeProgram &) {}, VersionVerdict::SameFile);
        row(
            "linked later", [](MadeProgram &p) { p.stamp += 5; }, VersionVerdict::SameButStamps);
        row(
            "with a checksum", [](MadeProgram &p) { p.checksum = 1; }, VersionVerdict::SameButStamps);
        row(
            "signed", [](MadeProgram &p) { p.signature = signature(); }, VersionVerdict::SameButStamps);
        row(
            "patched", [](MadeProgram &p) { p.code = "\xcc"; }, VersionVerdict::SameVersion);
        row(
            "newer", [](MadeProgram &p) { ++p.version; }, VersionVerdict::RightNewer);
        row(
            "older", [](MadeProgram &p) { p.version -= quint64(1) << 48; }, VersionVerdict::LeftNewer);
        QTest::newRow("of another system") << bigEndianLibrary("\1\2\3\4") << int(VersionVerdict::Unversioned);
    }

    void judges()
    {
        QFETCH(QByteArray, right);
        QFETCH(int, verdict);
        const ProgramFacts one = readProgram(madeProgram()).facts;
        QCOMPARE(int(judgeVersions(one, readProgram(right).facts)), verdict);
    }

    void pairsFactsByKindAndItem()
    {
        MadeProgram program;
        program.strings = {{word("companyname"), word("Other")}, {word("Comments"), word("new")}};
        const QList<VersionRow> rows =
            compareVersions(readProgram(madeProgram()).facts, readProgram(madeProgram(program)).facts);
        QStringList strings;
        for (const VersionRow &row : rows) {
            if (row.fact == ProgramFact::VersionString)
                strings.append(row.item.mid(9) + QString::number(int(row.status)));
        }
        QCOMPARE(strings, words("Comments3|CompanyName1|FileVersion2"));
    }

    void noticesDamage_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("fault");
        QTest::addColumn<int>("part");
        const auto row = [](const char *name, const QByteArray &file, ProgramFault fault, int part = -1) {
            QTest::newRow(name) << file << int(fault) << part;
        };
        const QByteArray whole = madeProgram();
        const auto changed = [&](qsizetype at, quint32 number) {
            ByteBuilder out{whole};
            out.put(at, number);
            return out.bytes;
        };
        row("a text", "text", ProgramFault::NoProgram);
        row("cut in its headers", whole.first(0x100), ProgramFault::Damaged);
        row("a header far away", changed(0x3c, 0xfffffff0), ProgramFault::Damaged);
        row("cut behind its headers", whole.first(0x300), ProgramFault::None, int(ProgramPart::Sections));
        row("imports nowhere", changed(0x58 + 120, 0x99000), ProgramFault::None, int(ProgramPart::Imports));
        row("a signature behind the end", changed(0x58 + 112 + 36, 0x7fffffff), ProgramFault::None, -1);
        const qsizetype resources = 0x600;
        row("resources in a circle", changed(resources + 0x18 + 20, 0x80000018), ProgramFault::None,
            int(ProgramPart::Resources));
        row("a block that is too long", changed(resources + 0x58, 0x0034ffff), ProgramFault::None,
            int(ProgramPart::VersionInfo));
    }

    void noticesDamage()
    {
        QFETCH(QByteArray, file);
        QFETCH(int, fault);
        QFETCH(int, part);
        const ProgramReading reading = readProgram(file);
        QCOMPARE(int(reading.fault), fault);
        if (part >= 0)
            QVERIFY(reading.facts.damaged.contains(ProgramPart(part)));
    }

    void readsWhatIsLeftOfAFile()
    {
        const QByteArray whole = madeProgram();
        const ProgramFacts all = readProgram(whole).facts;
        for (qsizetype length = 0; length < whole.size(); ++length) {
            const ProgramReading reading = readProgram(whole.first(length));
            if (!reading.ok()) {
                QVERIFY(reading.facts.values.isEmpty());
                continue;
            }
            QVERIFY2(!reading.facts.damaged.isEmpty(), qPrintable(QString::number(length)));
            for (const FactValue &value : reading.facts.values)
                QVERIFY(value.offset <= length);
        }
    }
};

VELMORA_TEST(VersionEngineTest)
#include "version_engine_test.moc"
