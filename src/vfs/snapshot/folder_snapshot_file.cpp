#include "vfs/snapshot/folder_snapshot_file.h"

#include "core/iso_times.h"
#include "core/json_reader.h"
#include "core/json_text.h"
#include "core/output_buffer.h"
#include "vfs/safe_name.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace velmora {

namespace {

using Fault = FolderSnapshotFault;
using Token = JsonReader::Token;

/// Between two looks at the cancel flag.
constexpr std::size_t entriesAtOnce = 4096;

std::string_view view(const QByteArray &bytes)
{
    return {bytes.constData(), std::size_t(bytes.size())};
}

void writeEntry(OutputBuffer &output, const FolderSnapshotEntry &entry, IsoTimes &times)
{
    output << "        {\n";
    if (entry.modifiedMs)
        output << "            \"modified\": \"" << view(times.text(*entry.modifiedMs)) << "\",\n";
    output << "            \"path\": ";
    writeJsonText(output, entry.path);
    if (!entry.digest.isEmpty())
        output << ",\n            \"sha256\": \"" << view(entry.digest.toHex()) << '"';
    output << ",\n            \"size\": " << entry.size << "\n        }";
}

/// Reads the tokens of one file.
class Reader {
public:
    Reader(QIODevice &device, const CancelFlag &cancel, Progress &progress)
        : m_json(device), m_total(device.isSequential() ? 0 : device.size()), m_cancel(cancel), m_progress(progress)
    {}

    FolderSnapshotReading read()
    {
        const Fault fault = readObject();
        if (fault == Fault::None) {
            order();
            return std::move(m_reading);
        }
        FolderSnapshotReading failed;
        failed.fault = fault;
        failed.at = fault == Fault::NotJson ? m_json.position() : qint64(m_reading.snapshot.entries.size()) + 1;
        return failed;
    }

private:
    Fault readObject()
    {
        if (const Token first = m_json.next(); first != Token::ObjectBegin)
            return m_json.skip(first) && m_json.next() == Token::End ? Fault::NoEntries : Fault::NotJson;
        bool hasEntries = false;
        Token token = m_json.next();
        for (; token == Token::Key; token = m_json.next()) {
            const QString key = m_json.text();
            const Token value = m_json.next();
            if (key == u"entries") {
                if (value != Token::ListBegin)
                    return m_json.skip(value) ? Fault::NoEntries : Fault::NotJson;
                hasEntries = true;
                if (const Fault fault = readEntries(); fault != Fault::None)
                    return fault;
            } else if (value == Token::Text && (key == u"root" || key == u"created")) {
                (key == u"root" ? m_reading.snapshot.root : m_reading.snapshot.created) = m_json.text();
            } else if (!m_json.skip(value)) {
                return Fault::NotJson;
            }
        }
        if (token != Token::ObjectEnd || m_json.next() != Token::End)
            return Fault::NotJson;
        return hasEntries ? Fault::None : Fault::NoEntries;
    }

    Fault readEntries()
    {
        auto &entries = m_reading.snapshot.entries;
        entries.clear();
        Token token = m_json.next();
        for (; token == Token::ObjectBegin; token = m_json.next()) {
            if (entries.size() % entriesAtOnce == 0) {
                if (m_cancel.isCancelled())
                    return Fault::Cancelled;
                m_progress.report(int(FolderSnapshotPhase::Loading), m_json.position(), m_total);
            }
            FolderSnapshotEntry entry;
            if (const Fault fault = readEntry(entry); fault != Fault::None)
                return fault;
            entries.push_back(std::move(entry));
        }
        if (token == Token::ListEnd)
            return Fault::None;
        return token == Token::Fault ? Fault::NotJson : Fault::BadEntry;
    }

    Fault readEntry(FolderSnapshotEntry &entry)
    {
        bool isWhole = true;
        std::optional<qint64> size;
        Token token = m_json.next();
        for (; token == Token::Key; token = m_json.next()) {
            const QString key = m_json.text();
            const Token value = m_json.next();
            if (key == u"path" && value == Token::Text) {
                entry.path = m_json.text();
            } else if (key == u"size" && value == Token::Number) {
                size = m_json.wholeNumber();
            } else if (key == u"modified" && value == Token::Text) {
                entry.modifiedMs = m_times.time(m_json.text());
            } else if (key == u"sha256" && value == Token::Text) {
                isWhole = isWhole && readDigest(entry.digest);
            } else if (!m_json.skip(value)) {
                return Fault::NotJson;
            }
        }
        if (token != Token::ObjectEnd)
            return Fault::NotJson;
        entry.size = size.value_or(-1);
        return isWhole && entry.size >= 0 && staysInFolder(entry.path) ? Fault::None : Fault::BadEntry;
    }

    bool readDigest(QByteArray &digest)
    {
        constexpr qsizetype digestSize = 32;
        const QByteArray text = m_json.text().toLatin1();
        digest = QByteArray::fromHex(text);
        return text.isEmpty() || (digest.size() == digestSize && text.size() == 2 * digestSize);
    }

    void order()
    {
        auto &entries = m_reading.snapshot.entries;
        const auto isBefore = [](const auto &one, const auto &other) { return one.path < other.path; };
        if (!std::is_sorted(entries.begin(), entries.end(), isBefore))
            std::stable_sort(entries.begin(), entries.end(), isBefore);
        std::size_t kept = 0;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const bool isRepeated = kept > 0 && entries[kept - 1].path == entries[i].path;
            if (isRepeated && m_reading.repeated++ == 0)
                m_reading.firstRepeated = entries[i].path;
            kept += !isRepeated;
            if (kept - 1 != i)
                entries[kept - 1] = std::move(entries[i]);
        }
        entries.resize(kept);
    }

    JsonReader m_json;
    qint64 m_total;
    const CancelFlag &m_cancel;
    Progress &m_progress;
    IsoTimes m_times;
    FolderSnapshotReading m_reading;
};

} // namespace

bool FolderSnapshot::hasDigests() const
{
    return std::any_of(entries.begin(), entries.end(), [](const auto &entry) { return !entry.digest.isEmpty(); });
}

bool writeFolderSnapshot(QIODevice &device, const FolderSnapshot &snapshot, const CancelFlag &cancel)
{
    OutputBuffer output(device);
    IsoTimes times;
    output << "{\n    \"created\": ";
    writeJsonText(output, snapshot.created);
    output << ",\n    \"entries\": [\n";
    for (std::size_t i = 0; i < snapshot.entries.size(); ++i) {
        if (i % entriesAtOnce == 0 && cancel.isCancelled())
            return false;
        writeEntry(output, snapshot.entries[i], times);
        output << (i + 1 < snapshot.entries.size() ? ",\n" : "\n");
    }
    output << "    ],\n    \"root\": ";
    writeJsonText(output, snapshot.root);
    output << ",\n    \"version\": 1\n}\n";
    return output.finish();
}

SaveResult saveFolderSnapshot(const QString &path, const FolderSnapshot &snapshot, const CancelFlag &cancel)
{
    return saveFile(
        path, [&](QIODevice &device) { return writeFolderSnapshot(device, snapshot, cancel); }, cancel);
}

FolderSnapshotReading readFolderSnapshot(QIODevice &device, const CancelFlag &cancel, Progress &progress)
{
    return Reader(device, cancel, progress).read();
}

FolderSnapshotReading loadFolderSnapshot(const QString &path, const CancelFlag &cancel, Progress &progress)
{
    QFile file(path);
    if (QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return readFolderSnapshot(file, cancel, progress);
    FolderSnapshotReading reading;
    reading.fault = Fault::CannotOpen;
    reading.error = file.error() == QFileDevice::NoError ? QString() : file.errorString();
    return reading;
}

bool isFolderSnapshotFile(const QString &path)
{
    return path.endsWith(folderSnapshotSuffix, Qt::CaseInsensitive) && QFileInfo(path).isFile();
}

} // namespace velmora
