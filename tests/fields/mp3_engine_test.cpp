#include "core/child_process.h"
#include "filetypes/mp3/engine/common_fields.h"
#include "filetypes/mp3/engine/field_meaning.h"
#include "filetypes/mp3/engine/song_compare.h"
#include "filetypes/mp3/engine/song_edit.h"
#include "filetypes/mp3/engine/tag_agreement.h"
#include "filetypes/mp3/engine/tag_conversion.h"
#include "support/files.h"
#include "support/made_music.h"
#include "support/test_main.h"

#include <QBuffer>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <array>

using namespace velmora;
using namespace velmora::test;

namespace {

SongReading reading(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return readSong(buffer);
}

Song song(const QByteArray &bytes)
{
    return reading(bytes).song;
}

SongVerdict judged(const QByteArray &left, const QByteArray &right)
{
    return judgeSongs(song(left), song(right));
}

QString valueOf(const SongTags &tags, SongGroup group, const char *key, const char *charset = "")
{
    for (const SongField &field : tags.fields) {
        if (field.group == group && field.key == QLatin1String(key))
            return valueIn(field, QLatin1String(charset));
    }
    return word("(none)");
}

QByteArray picture(const QByteArray &bytes)
{
    return id3Frame("APIC",
                    QByteArray(1, '\0') + "image/png" + QByteArray(1, '\0') + "\x03" + QByteArray(1, '\0') + bytes);
}

QByteArray oggVorbis(const QByteArray &title, int commentPages)
{
    const QByteArray ident =
        "\x01vorbis" + QByteArray(4, '\0') + "\x01" + littleNumber(44100) + QByteArray(12, '\0') + "\xb8\x01";
    const QByteArray comment = "\x03vorbis" + littleNumber(0) + littleNumber(1) +
                               littleNumber(quint32(title.size() + 6)) + "TITLE=" + title + "\x01";
    QByteArray file = oggPage(0, ident);
    quint32 number = 1;
    for (int k = 0; k < commentPages - 1; ++k)
        file += oggPage(number++, QByteArray(255, 'x')); // begins a packet that goes on
    if (commentPages > 1)
        file.replace(file.indexOf(QByteArray(255, 'x')), 255, comment + QByteArray(255 - comment.size(), '\0'));
    file += oggPage(number++, commentPages > 1 ? QByteArray(9, 'y') : comment);
    file += oggPage(number++, "\x05vorbis setup");
    return file + oggPage(number, "sound", true);
}

QByteArray nested(const QByteArray &name, int levels)
{
    QByteArray box;
    for (int k = 0; k < levels; ++k)
        box = mp4Box(name.constData(), box);
    return box;
}

} // namespace

class Mp3EngineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void toldApartBySound_data()
    {
        QTest::addColumn<QByteArray>("left");
        QTest::addColumn<QByteArray>("right");
        QTest::addColumn<SongVerdict>("verdict");
        const QByteArray sound = madeSound();
        const QByteArray tag = id3v2(3, id3Text("TIT2", "One"));
        QByteArray otherNote = sound;
        otherNote.replace("LAME3.100", "LAME3.99 ");
        QByteArray otherSound = sound;
        otherSound.back() = 'z';
        const auto row = [](const char *name, const QByteArray &left, const QByteArray &right, SongVerdict verdict) {
            QTest::newRow(name) << left << right << verdict;
        };
        row("same", tag + sound, tag + sound, SongVerdict::SameFile);
        row("no tag", sound, tag + sound, SongVerdict::SameSound);
        row("two tags", sound, tag + tag + sound, SongVerdict::SameSound);
        row("padding before the sound", tag + sound, tag + QByteArray(700, '\0') + sound, SongVerdict::SameContents);
        row("tags behind", tag + sound, tag + sound + apeTag("Title", "One") + id3v1("One", ""),
            SongVerdict::SameSound);
        row("lyrics behind", sound, sound + "LYRICSBEGININD0000210000021LYRICS200" + id3v1("a", ""),
            SongVerdict::SameSound);
        row("note of the encoder", sound, otherNote, SongVerdict::SameContents);
        row("other sound", tag + sound, tag + otherSound, SongVerdict::SameTags);
        row("all other", tag + sound, otherSound, SongVerdict::Different);
        row("flac", madeFlac("TITLE=a"), madeFlac("TITLE=longer"), SongVerdict::SameSound);
        row("flac otherwise", madeFlac("TITLE=a"), madeFlac("TITLE=a", "other"), SongVerdict::SameSamples);
        row("flac cut off", madeFlac("TITLE=a"), madeFlac("TITLE=a").chopped(1), SongVerdict::SameTags);
        row("flac other", madeFlac("TITLE=a"), madeFlac("TITLE=b", "other", 'n'), SongVerdict::Different);
        const QByteArray info = "LIST" + littleNumber(16) + "INFOINAM" + littleNumber(4) + "One" + QByteArray(1, '\0');
        row("wav", madeWave(QByteArray(400, 'a')), madeWave(QByteArray(400, 'a'), info), SongVerdict::SameSound);
        row("wav other", madeWave(QByteArray(400, 'a')), madeWave(QByteArray(400, 'b')), SongVerdict::Different);
        row("aiff and wav", madeAiff("abcdabcd"), madeWave("badcbadc"), SongVerdict::SameSamples);
        row("aiff other", madeAiff(QByteArray(400, 'a')), madeAiff(QByteArray(400, 'b')), SongVerdict::Different);
        row("tags of two systems", id3v2(4, id3Text("TIT2", "a")) + sound, madeFlac("TITLE=a"), SongVerdict::SameTags);
        row("ogg", oggVorbis("a", 1), oggVorbis("b", 3), SongVerdict::SameSound);
        row("mp4 moved", madeMp4(), madeMp4("longer"), SongVerdict::SameContents);
        row("mp4 points elsewhere", madeMp4(), madeMp4({}, 1), SongVerdict::Different);
    }

    void toldApartBySound()
    {
        QFETCH(QByteArray, left);
        QFETCH(QByteArray, right);
        for (const QByteArray &bytes : {left, right})
            QCOMPARE(reading(bytes).fault, SoundFault::None);
        QTEST(judged(left, right), "verdict");
    }

    void readsWhatTheSoundIs()
    {
        const Song made = song(madeSound(100));
        QCOMPARE(made.fact(factKey::format), word("MPEG 1 Layer III"));
        QCOMPARE(made.milliseconds, (100 * 1152 - 576 - 1105) * 1000 / 44100);
        QCOMPARE(made.fact(factKey::bitRate), word("128"));
        QCOMPARE(made.fact(factKey::rateMode), word("ABR")); // as LAME notes it
        QCOMPARE(made.fact(factKey::channelMode), word("joint stereo"));
        QCOMPARE(made.fact(factKey::encoder), word("LAME3.100"));
        QCOMPARE(made.fact(factKey::gaps), word("576 + 1105"));
        QVERIFY(!made.isCutOff && made.damagedPlaces == 0);
        QCOMPARE(song(madeFrame() + madeFrame(11) + madeFrame()).fact(factKey::rateMode), word("VBR"));
        // Bad bytes between frames are passed over, and told; so is what is missing at the end.
        QByteArray damaged = madeSound(20);
        damaged.insert(417 * 7, "garbage\xff\xfb");
        QCOMPARE(song(damaged).damagedPlaces, 1);
        QCOMPARE(song(damaged).fact(factKey::frames), word("20"));
        QVERIFY(song(madeSound(20).chopped(100)).isCutOff);
        QVERIFY(song(madeSound(20).chopped(417)).isCutOff);
        for (const QByteArray &whole : {oggVorbis("a", 1), madeFlac("TITLE=a")}) {
            QVERIFY(!song(whole).isCutOff);
            QVERIFY(song(whole.chopped(2)).isCutOff);
        }
        QVERIFY(song(oggVorbis("a", 1).chopped(33)).isCutOff);        // between two pages
        QVERIFY(song(madeFlac("TITLE=a", "sound", 'm', 2)).isCutOff); // before the second frame
    }

    void readsEveryTagSystem()
    {
        const QByteArray frames = id3Text("TIT2", "Song") +
                                  id3Frame("COMM", QByteArray(1, '\0') + "engabout" + '\0' + "said") +
                                  id3Frame("USLT", QByteArray(1, '\0') + "eng" + '\0' + "la la") + picture("\x89PNG1") +
                                  id3Text("TYER", "2004");
        for (const int minor : {3, 4}) {
            const SongTags tags =
                song(id3v2(minor, frames) + madeSound() + apeTag("Artist", "Ape") + id3v1("Song", "V1")).tags;
            QCOMPARE(tags.id3v2Version, QStringLiteral("2.%1").arg(minor));
            QCOMPARE(valueOf(tags, SongGroup::Id3v2, "COMM"), word("said"));
            QCOMPARE(valueOf(tags, SongGroup::Id3v2, "USLT"), word("la la"));
            QCOMPARE(valueOf(tags, SongGroup::Ape, "ARTIST"), word("Ape"));
            QCOMPARE(valueOf(tags, SongGroup::Id3v1, "artist"), word("V1"));
            QCOMPARE(valueOf(tags, SongGroup::Id3v1, "track"), word("7"));
            const auto found = std::find_if(tags.fields.begin(), tags.fields.end(),
                                            [](const SongField &field) { return field.picture; });
            QVERIFY(found != tags.fields.end());
            QCOMPARE(found->picture->bytes, QByteArray("\x89PNG1"));
            QCOMPARE(found->picture->kind, 3);
            QStringList contradicting;
            for (const SongField &field : contradictions(tags, {}))
                contradicting.append(field.key + u' ' + field.value);
            QCOMPARE(contradicting.join(u'|'),
                     word(minor == 3 ? "artist ID3v1: V1\nAPE: Ape|year ID3v2: 2004\nID3v1: 1999"
                                     : "artist ID3v1: V1\nAPE: Ape"));
        }
        const QByteArray two = QByteArray("TT2") + QByteArray("\0\0\4", 3) + QByteArray(1, '\0') + "Old";
        const SongTags old = song(id3v2(2, two) + madeSound()).tags;
        QCOMPARE(old.id3v2Version, word("2.2"));
        QCOMPARE(valueOf(old, SongGroup::Id3v2, "TIT2"), word("Old"));
        const QByteArray cutTitle = "A title of more than thirty by";
        QVERIFY(contradictions(
                    song(id3v2(3, id3Text("TIT2", cutTitle + "tes")) + madeSound() + id3v1(cutTitle, "")).tags, {})
                    .isEmpty());
    }

    void readsOldTextsByChoice()
    {
        const QByteArray gbk = "\xd6\xd0\xce\xc4";
        const SongTags tags = song(id3v2(3, id3Text("TIT2", gbk)) + madeSound() + id3v1(gbk, "plain")).tags;
        for (const auto &[group, key] : {std::pair(SongGroup::Id3v2, "TIT2"), std::pair(SongGroup::Id3v1, "title")}) {
            QCOMPARE(valueOf(tags, group, key), QString::fromLatin1(gbk));
            QCOMPARE(valueOf(tags, group, key, "GBK"), QStringLiteral("\u4e2d\u6587"));
            QCOMPARE(valueOf(tags, group, key, "windows-1251"), QStringLiteral("\u0426\u0420\u041e\u0414"));
        }
        QCOMPARE(valueOf(tags, SongGroup::Id3v1, "artist", "GBK"), word("plain"));
    }

    void tellsOfDamagedTags()
    {
        const auto unread = [](int minor, const QByteArray &frames, char flags = 0) {
            const Song read = song(id3v2(minor, frames).replace(5, 1, QByteArray(1, flags)) + madeSound());
            return read.tagDamage.isEmpty() ? 0 : read.tagDamage.first().number;
        };
        const QByteArray good = id3Text("TIT2", "Good");
        const QByteArray beyond = id3Text("TPE1", "Far").replace(6, 1, "\1");
        const QByteArray old("TT2\0\0\2\0x", 8);
        for (const int minor : {3, 4}) {
            QCOMPARE(unread(minor, good + good + QByteArray(20, '\0')), 0);
            QCOMPARE(unread(minor, good + beyond), beyond.size());
            QCOMPARE(unread(minor, good + id3Frame("TPE1", "") + good), 10 + good.size());
            QCOMPARE(unread(minor, good + "no frame is here"), 16);
        }
        QCOMPARE(unread(2, old + old + QByteArray(9, '\0')), 0);
        QCOMPARE(unread(2, old + old.chopped(1)), 7);
        // Sizes as version 2.3 has them; zeros put in behind 0xff; frames behind more of a header.
        QCOMPARE(unread(4, id3Text("TIT2", QByteArray(200, 'x')) + good), 0);
        QCOMPARE(unread(3, id3Frame("PRIV", "a").replace(10, 1, QByteArray("\xff\0", 2)) + good, '\x80'), 0);
        QCOMPARE(unread(3, bigNumber(6) + QByteArray(6, '\0') + good, '\x40'), 0);
        QCOMPARE(unread(3, bigNumber(6) + QByteArray(6, '\0') + beyond, '\x40'), beyond.size());
    }

    void tellsOfDamagedTagsBehindTheSound_data()
    {
        QTest::addColumn<QByteArray>("behind");
        QTest::addColumn<QString>("told");
        QTest::addColumn<TagSaveFault>("saving");
        const auto row = [](const char *name, const QByteArray &behind, const char *told, TagSaveFault saving) {
            QTest::newRow(name) << behind << word(told) << saving;
        };
        const auto item = [](const QByteArray &name, const QByteArray &value, quint32 flags = 0, int more = 0) {
            return littleNumber(quint32(value.size() + more)) + littleNumber(flags) + name + '\0' + value;
        };
        const auto end = [](qsizetype length, quint32 count, quint32 flags) {
            return "APETAGEX" + littleNumber(2000) + littleNumber(quint32(length)) + littleNumber(count) +
                   littleNumber(flags) + QByteArray(8, '\0');
        };
        const auto tag = [&](const QByteArray &items, quint32 count, qsizetype more = 0) {
            return end(items.size() + 32, count, 0xa0000000) + items + end(items.size() + 32 + more, count, 0x80000000);
        };
        const auto none = TagSaveFault::None;
        const auto refused = TagSaveFault::NotPossible;
        const auto asked = TagSaveFault::WouldLose;
        const QByteArray one = item("Title", "One");
        const QByteArray whole = tag(one, 1);
        const QByteArray v1 = id3v1("a", "b");
        row("whole", whole, "", none);
        row("whole, ID3v1 behind", whole + v1, "", none);
        row("without a header", whole.mid(32).chopped(32) + end(one.size() + 32, 1, 0), "", none);
        row("without a field", tag({}, 0), "", none);
        row("out of the file", tag(one, 1, 1 << 24), "ApeLength 16777265", refused);
        row("into the sound", tag(one, 1, 200), "ApeLength 249", refused);
        row("over what is before the sound", tag(one, 1, 5003), "ApeLength 5052", refused);
        row("too short for its end", end(31, 1, 0), "ApeLength 31", refused);
        row("header alone", whole.first(40), "ApeCutOff 0", refused);
        row("header at the end", whole.first(32), "ApeCutOff 0", refused);
        row("header gone", whole.mid(32), "ApeBeginning 0", refused);
        row("header not told of", whole.chopped(9) + QByteArray(9, '\0'), "ApeBeginning 0", refused);
        row("header says otherwise", end(one.size() + 32, 2, 0xa0000000) + whole.mid(32), "ApeBeginning 0", refused);
        row("fewer fields", tag(one, 9), "ApeCount 9", none);
        row("more fields", tag(one + one, 1), "ApeRest 17", asked);
        row("nothing ends a name", tag(one + QByteArray(20, 'x'), 2), "ApeRest 20", asked);
        row("short name", tag(one + item("x", "a") + item("y", "ab"), 3), "ApeName 2 x", asked);
        row("long name", tag(one + item(QByteArray(256, 'n'), "a"), 2),
            ("ApeName 1 " + QByteArray(60, 'n')).constData(), asked);
        row("letters of a name", tag(one + item("a\xe4", "a"), 2), "ApeName 1 a\u00e4", asked);
        row("forbidden name", tag(one + item("oggs", "a"), 2), "ApeName 1 oggs", asked);
        row("value leads out", tag(one + item("Year", "1999", 0, 1), 2), "ApeValue 1 Year", none);
        row("same name", tag(one + item("TITLE", "Two"), 2), "ApeTwice 1 TITLE", asked);
        row("flags", tag(one + item("Year", "1999", 0x10), 2), "ApeFlags 1 Year", asked);
        row("binary", tag(one + item("Cover Art (Front)", "a.png\xff\xd8", 2), 2), "", none);
        row("old text", tag(one + item("Artist", "\xd6\xd0"), 2), "ApeOldText 1 Artist", refused);
        row("before another", whole + apeTag("Year", "1999"), "ApeUnread 0", none);
        row("before lyrics", whole + "LYRICSBEGININD0000210000021LYRICS200" + v1, "ApeUnread 0", none);
        row("ID3v1 cut off", v1.chopped(1), "Id3v1Unread 0", none);
        row("ID3v1 before another tag", v1 + whole, "Id3v1Unread 0", none);
        row("lyrics cut off", "LYRICSBEGININD00002100000", "LyricsUnread 0", none);
        row("lyrics of another length", "LYRICSBEGININD0000210000022LYRICS200", "LyricsUnread 0", none);
        row("old lyrics", "LYRICSBEGINla laLYRICSEND" + v1, "", none);
    }

    void tellsOfDamagedTagsBehindTheSound()
    {
        static constexpr std::array names{"Id3v2Rest", "Id3v1Unread",  "LyricsUnread", "ApeUnread", "ApeCutOff",
                                          "ApeLength", "ApeBeginning", "ApeCount",     "ApeRest",   "ApeName",
                                          "ApeValue",  "ApeTwice",     "ApeFlags",     "ApeOldText"};
        QFETCH(QByteArray, behind);
        QFETCH(TagSaveFault, saving);
        const QByteArray bytes = id3v2(3, id3Text("TIT2", "Old") + id3Text("TPE1", "Keep")) + madeSound() + behind;
        QTemporaryDir folder;
        const QString path = folder.filePath(word("a.mp3"));
        QVERIFY(makeFile(path, bytes));
        const Song read = loadSong(path).song;
        QStringList told;
        for (const TagDamage &damage : read.tagDamage)
            told.append(QStringLiteral("%1 %2 %3")
                            .arg(QLatin1String(names[std::size_t(damage.fault)]))
                            .arg(damage.number)
                            .arg(damage.name)
                            .trimmed());
        QTEST(told.join(u'|'), "told");
        // The sound is found whatever lengths say, and nothing goes that nobody was asked about.
        QCOMPARE(read.soundHash, song(madeSound()).soundHash);
        SongTags wanted = read.tags;
        wanted.fields.removeFirst();
        QCOMPARE(saveTags(path, read, wanted, Loss::Refused).fault, saving);
        if (saving != TagSaveFault::None)
            QCOMPARE(contentsOf(path), bytes);
        QCOMPARE(saveTags(path, loadSong(path).song, wanted, Loss::Accepted).ok(), saving != TagSaveFault::NotPossible);
        QCOMPARE(loadSong(path).song.soundHash, read.soundHash);
    }

    void refusesWhatIsHostileOrNoSound()
    {
        QCOMPARE(reading("a text").fault, SoundFault::NoSound);
        QCOMPARE(reading({}).fault, SoundFault::NoSound);
        QCOMPARE(reading(id3v2(3, id3Text("TIT2", "a"))).fault, SoundFault::Damaged);
        const QByteArray sound = madeSound();
        QByteArray chapters;
        for (int k = 0; k < 2000; ++k)
            chapters += "CHAP" + QByteArray(22, '\1');
        const QByteArray packed =
            QByteArray("TIT2") + synchSafe(300000) + QByteArray("\0\x08", 2) + QByteArray(300000, 'a');
        QCOMPARE(reading(id3v2(4, chapters) + sound).fault, SoundFault::TooLarge);
        QCOMPARE(reading(id3v2(4, packed) + sound).fault, SoundFault::TooLarge);
        QCOMPARE(reading(sound + apeTag("a", "b", 1u << 30)).fault, SoundFault::TooLarge);
        // A text of nothing but ends of texts, and a length that leads back to where it stands.
        QCOMPARE(reading(sound + apeTag("Title", QByteArray(30'000, '\0'))).fault, SoundFault::TooLarge);
        QCOMPARE(reading(sound + apeTag("Title", QByteArray(1 << 16, 'x'), 19'999).replace(0, 4, littleNumber(0U - 14)))
                     .fault,
                 SoundFault::TooLarge);
        QCOMPARE(reading(mp4Box("ftyp", "M4A ") + nested("moov", 5000) + mp4Box("mdat", "a")).fault,
                 SoundFault::TooLarge);
        QCOMPARE(reading(id3v2(3, QByteArray()).replace(6, 4, QByteArray(4, '\x7f')) + sound).fault,
                 SoundFault::Damaged);
        // Cut off anywhere, a file is read as far as it goes or has a fault.
        const QByteArray all =
            id3v2(4, id3Text("TIT2", "a") + picture("abc")) + sound + apeTag("a", "b") + id3v1("a", "b");
        for (const QByteArray &whole :
             {all, madeFlac("TITLE=a"), oggVorbis("a", 2), madeMp4(), madeWave("abcd"), madeAiff("abcd")}) {
            for (qsizetype length = 0; length < whole.size(); length += 1 + whole.size() / 200) {
                const SongReading cut = reading(whole.first(length));
                QVERIFY(cut.ok() || cut.song.tags.fields.isEmpty());
            }
        }
    }

    void savesBesideAndKeepsTheSound()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(word("a.mp3"));
        const QByteArray before =
            id3v2(3, id3Text("TIT2", "Old") + id3Text("TPE1", "Keep")) + madeSound() + id3v1("Old", "x");
        const Song source =
            song(id3v2(4, id3Text("TIT2", "\xd6\xd0") + picture("cover")) + madeSound() + apeTag("Title", "New"));
        QVERIFY(makeFile(path, before));
        const Song read = loadSong(path).song;
        SongTags wanted = withCopied(source.tags, read.tags, {SongGroup::Id3v2, word("TIT2")});
        wanted = withCopied(source.tags, wanted, {SongGroup::Id3v2, word("APIC"), word("3")});
        wanted = withCopied(source.tags, wanted, {SongGroup::Ape, word("TITLE")});
        const TagSave saved = saveTags(path, read, wanted, Loss::Refused);
        QVERIFY(saved.ok());
        const Song after = loadSong(path).song;
        QCOMPARE(after.soundHash, read.soundHash);
        QVERIFY(areSame(after.tags, wanted));
        QCOMPARE(after.tags.id3v2Version, word("2.3"));
        QCOMPARE(valueOf(after.tags, SongGroup::Id3v2, "TIT2", "GBK"), QStringLiteral("\u4e2d"));
        QCOMPARE(valueOf(after.tags, SongGroup::Id3v2, "TPE1"), word("Keep"));
        QCOMPARE(valueOf(after.tags, SongGroup::Ape, "TITLE"), word("New"));
        QVERIFY(areSame(saved.song.tags, after.tags));
        // The way back, and all at once.
        QVERIFY(saveTags(path, after, read.tags, Loss::Refused).ok());
        QVERIFY(areSame(loadSong(path).song.tags, read.tags));
        const Song again = loadSong(path).song;
        QVERIFY(saveTags(path, again, withAllCopied(source.tags, again.tags, again.format), Loss::Refused).ok());
        QCOMPARE(judgeSongs(loadSong(path).song, source) == SongVerdict::SameContents, true);
    }

    void convertsBetweenSystems_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("first");
        QTest::newRow("flac") << madeFlac("TITLE=x") << word("TITLE");
        QTest::newRow("mp4") << madeMp4() << QStringLiteral("\u00a9nam");
        QTest::newRow("mp3") << madeSound() << word("TIT2");
        QTest::newRow("wav") << madeWave("abcd") << word("TIT2");
        QTest::newRow("aiff") << madeAiff("abcd") << word("TIT2");
    }

    void convertsBetweenSystems()
    {
        QFETCH(QByteArray, file);
        const Song source =
            song(id3v2(4, id3Text("TIT2", "\xd6\xd0") + id3Text("TRCK", "3/12") + id3Text("TCON", "17") +
                              id3Text("TDRC", "2004-05") + id3Text("TBPM", "120") +
                              id3Text("TPE1", QByteArray("One\0Two", 7)) + id3Text("TSSE", "LAME") +
                              id3Frame("TXXX", QByteArray("\0MOOD\0calm", 10)) +
                              id3Frame("COMM", QByteArray("\0eng\0said", 9)) +
                              id3Frame("USLT", QByteArray("\0eng\0la\nla", 10)) + picture("\x89PNG1")) +
                 madeSound());
        QTemporaryDir folder;
        const QString path = folder.filePath(word("a"));
        QVERIFY(makeFile(path, file));
        const Song read = loadSong(path).song;
        const SongGroup system = mainSystem(read.format);
        const SystemTags from{source.tags, SongGroup::Id3v2};
        const SongTags all = withAllConverted(from, {read.tags, system}, word("GBK"));
        QVERIFY(saveTags(path, read, all, Loss::Refused).ok());
        const Song saved = loadSong(path).song;
        QCOMPARE(saved.soundHash, read.soundHash);
        QVERIFY(areSame(saved.tags, all));
        QCOMPARE(saved.tags.fields.first().group, system);
        QStringList said;
        for (const SongField &field : commonFields(saved.tags, system, {}))
            said.append(field.key + u'=' + field.value.section(u',', 0, 0));
        said.sort();
        QStringList expected{word("artist=One\nTwo"), word("comment=said"),           word("genre=Rock"),
                             word("lyrics=la\nla"),   word("picture=image/png"),      word("tempo=120"),
                             word("text=calm"),       QStringLiteral("title=\u4e2d"), word("track=3/12"),
                             word("year=2004-05")};
        QCOMPARE(said, expected);
        // One by one it is the same; the other way, what the source does not have goes.
        SongTags single = read.tags;
        for (const SongField &thing : commonFields(source.tags, SongGroup::Id3v2, {}))
            single = withConverted(from, {single, system}, thing, word("GBK"));
        QCOMPARE(commonFields(single, system, {}).size(), expected.size() + 1); // with the encoder
        QFETCH(QString, first);
        const SongTags none = withConverted({{}, SongGroup::Vorbis}, {all, system}, {system, first}, {});
        QCOMPARE(none.fields.size(), all.fields.size() - 1);
    }

    void keepsSecondaryTagsInStep()
    {
        const auto utf8 = [](const char *name, const QByteArray &text) { return id3Frame(name, "\x03" + text); };
        QTemporaryDir folder;
        const QString path = folder.filePath(word("a.mp3"));
        const QByteArray frames = utf8("TIT2", "Thirty letters and some more \xc3\xbc\xe4\xb8\xad") +
                                  utf8("TPE1", QByteArray("\xe4\xb8\xad\xc3\xbc\0B", 7)) + utf8("TDRC", "2001-05") +
                                  utf8("TRCK", "300/400") + utf8("TCON", QByteArray("Own\0Jazz", 8));
        QVERIFY(makeFile(path, id3v2(4, frames) + madeSound() + apeTag("Title", "old") + id3v1("old", "old")));
        const Song before = loadSong(path).song;
        SongTags tags = before.tags;
        for (const CommonField field : {CommonField::Title, CommonField::Artist, CommonField::Year, CommonField::Track,
                                        CommonField::Genre, CommonField::Composer}) {
            for (const SongGroup follower : {SongGroup::Id3v1, SongGroup::Ape})
                tags = withAgreement(std::move(tags), SongGroup::Id3v2, follower, field, {});
        }
        // What is made is what is read again, or saving would tell of a loss.
        QVERIFY(saveTags(path, before, tags, Loss::Refused).ok());
        tags = loadSong(path).song.tags;
        QStringList said{valueOf(tags, SongGroup::Ape, "TITLE")};
        for (const char *key : {"title", "artist", "year", "track", "genre"})
            said.append(valueOf(tags, SongGroup::Id3v1, key));
        QCOMPARE(said.join(u'|'),
                 QStringLiteral("Thirty letters and some more \u00fc\u4e2d|Thirty letters and some more "
                                "\u00fc|?\u00fc|2001|(none)|Jazz"));
        QVERIFY(contradictions(tags, {}).isEmpty());
    }

    void leavesTheFileWhereSavingFails()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(word("a.mp3"));
        const QByteArray bytes = id3v2(3, id3Text("TIT2", "Old")) + madeSound();
        QVERIFY(makeFile(path, bytes));
        const Song read = loadSong(path).song;
        const Song source = song(id3v2(4, id3Text("TDRC", "2004-05")) + madeSound());
        const SongTags wanted = withAllCopied(source.tags, read.tags, read.format);
        const TagSave lossy = saveTags(path, read, wanted, Loss::Refused); // version 2.3 has no month without a day
        QCOMPARE(lossy.fault, TagSaveFault::WouldLose);
        QCOMPARE(lossy.lost.first().key, word("TDRC"));
        QCOMPARE(contentsOf(path), bytes);
        QVERIFY(makeFile(path, bytes + "more"));
        QCOMPARE(saveTags(path, read, wanted, Loss::Accepted).fault, TagSaveFault::Changed);
        QCOMPARE(contentsOf(path), bytes + "more");
        CancelFlag cancelled;
        cancelled.cancel();
        QVERIFY(!saveTags(path, loadSong(path).song, wanted, Loss::Accepted, cancelled).ok());
        QCOMPARE(contentsOf(path), bytes + "more");
    }

    void readsWhatEncodersWrite_data()
    {
        QTest::addColumn<QStringList>("encoder");
        QTest::addColumn<QString>("name");
        QTest::newRow("lame") << QStringList{word("lame"), word("--quiet"), word("--tt"), word("One"),
                                             word("--add-id3v2")}
                              << word("a.mp3");
        QTest::newRow("flac") << QStringList{word("flac"), word("-s"),        word("-f"),
                                             word("-T"),   word("TITLE=One"), word("-o")}
                              << word("a.flac");
        for (const char *name : {"a.m4a", "a.opus", "a.ogg", "b.mp3", "b.wav"})
            QTest::newRow(name) << QStringList{word("ffmpeg"),    word("-v"),        word("error"),
                                               word("-metadata"), word("title=One"), word("-y")}
                                << QString::fromLatin1(name);
    }

    void readsWhatEncodersWrite()
    {
        QFETCH(QStringList, encoder);
        QFETCH(QString, name);
        const QString program = QStandardPaths::findExecutable(encoder.takeFirst());
        if (program.isEmpty())
            QSKIP("the encoder is not installed");
        QTemporaryDir folder;
        const QString wave = folder.filePath(word("a.wav"));
        const QString path = folder.filePath(name);
        QByteArray samples;
        for (int k = 0; k < 44100; ++k)
            samples += QByteArray(1, '\0') + char(k % 100 < 50 ? 0x10 : -0x10);
        QVERIFY(makeFile(wave, "RIFF" + littleNumber(quint32(samples.size() + 36)) + "WAVEfmt " + littleNumber(16) +
                                   QByteArray("\1\0\1\0", 4) + littleNumber(44100) + littleNumber(88200) +
                                   QByteArray("\2\0\x10\0", 4) + "data" + littleNumber(quint32(samples.size())) +
                                   samples));
        if (program.contains(word("ffmpeg")))
            encoder = QStringList{word("-i"), wave} + encoder + QStringList{path};
        else
            encoder += name == word("a.flac") ? QStringList{path, wave} : QStringList{wave, path};
        Progress progress;
        const ChildRun run = runChild(ChildCall{program, encoder, std::chrono::seconds(60)}, {}, progress);
        QVERIFY2(run.end == ChildEnd::Finished && run.exitCode == 0, run.errors.constData());
        const Song read = loadSong(path).song;
        QVERIFY2(std::abs(read.milliseconds - 1000) < 60, qPrintable(QString::number(read.milliseconds)));
        QVERIFY(read.damagedPlaces == 0 && !read.isCutOff);
        QCOMPARE(judgeSongs(loadSong(wave).song, read) == SongVerdict::SameSamples, name == word("a.flac"));
        const auto title = std::find_if(read.tags.fields.begin(), read.tags.fields.end(), [](const SongField &field) {
            return commonField(field.group, field.key) == CommonField::Title;
        });
        QVERIFY(title != read.tags.fields.end());
        QCOMPARE(title->value, word("One"));
        // Without the title, and with it once more: the sound is left alone each time.
        SongTags without = read.tags;
        without.fields.removeIf([&](const SongField &field) { return field.isSameThing(*title); });
        const TagSave taken = saveTags(path, read, without, Loss::Refused);
        QVERIFY(taken.ok());
        QVERIFY(saveTags(path, taken.song, read.tags, Loss::Refused).ok());
        QVERIFY(areSame(loadSong(path).song.tags, read.tags));
    }
};

VELMORA_TEST(Mp3EngineTest)
#include "mp3_engine_test.moc"
