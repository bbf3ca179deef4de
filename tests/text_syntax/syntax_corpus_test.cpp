#include "support/test_main.h"
#include "text_syntax/syntax_pictures.h"

#include <QDir>
#include <QFile>

using namespace velmora;
using test::library;
using test::picture;

/// The bundled definitions against small texts of their languages. A file of corpus/ names its type in the first line;
/// then follow, in turns, a line of the language behind two blanks and what is expected of it behind "> ".
class SyntaxCorpusTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyDefinitionIsSound()
    {
        QVERIFY2(library().errors().isEmpty(), qPrintable(library().errors().join(u'\n')));
        const QDir folder(QStringLiteral(VELMORA_SOURCE_DIR "/resources/syntax"));
        const QStringList files = folder.entryList({QStringLiteral("*.json")});
        QCOMPARE(library().names().size(), files.size());
        QCOMPARE(QSet<QString>(library().names().begin(), library().names().end()).size(), files.size());
        QFile listed(folder.filePath(QStringLiteral("syntax.qrc")));
        QVERIFY(listed.open(QIODevice::ReadOnly));
        const QString list = QString::fromUtf8(listed.readAll());
        for (const QString &file : files)
            QVERIFY2(list.contains(QStringLiteral("<file>%1</file>").arg(file)), qPrintable(file));
    }

    void linesLookAsTheyShould_data()
    {
        QTest::addColumn<QString>("path");
        const QDir folder(QStringLiteral(VELMORA_SOURCE_DIR "/tests/text_syntax/corpus"));
        const QStringList files = folder.entryList(QDir::Files);
        QCOMPARE(files.size(), library().names().size());
        for (const QString &file : files)
            QTest::newRow(qPrintable(file)) << folder.filePath(file);
    }

    void linesLookAsTheyShould()
    {
        QFETCH(const QString, path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
        const auto definition = library().named(lines.front());
        QVERIFY(definition);
        SyntaxState state;
        for (qsizetype k = 1; k + 1 < lines.size(); k += 2) {
            const QString line = lines.at(k).mid(2);
            ColouredLine coloured = colourLine(*definition, state, line);
            QCOMPARE(stateBehind(*definition, state, line), coloured.end);
            QCOMPARE(picture(coloured.tokens) + u'|' + line, lines.at(k + 1).mid(2) + u'|' + line);
            state = coloured.end;
        }
    }

    void typesAreDetected()
    {
        struct Case {
            const char *name;
            const char *firstLine;
            const char *type;
        };
        for (const Case &file : {Case{"a.cpp", "", "C/C++"},
                                 {"A.H", "", "C/C++"},
                                 {"CMakeLists.txt", "# x", "CMake"},
                                 {"notes.txt", "", ""},
                                 {"app.ts", "import x from 'y';", "JavaScript/TypeScript"},
                                 {"app_de.ts", "<?xml version=\"1.0\"?>", "XML"},
                                 {"app_de.ts", "<!DOCTYPE TS>", "XML"},
                                 {"run", "#!/usr/bin/env python3", "Python"},
                                 {"run", "#!/bin/sh -e", "Shell"},
                                 {"run", "#!/usr/bin/env node", "JavaScript/TypeScript"},
                                 {"page", "  <!DOCTYPE html>", "HTML"},
                                 {"x.txt", "--- a/x\t2020", "Diff"},
                                 {"x", "---", "YAML"},
                                 {"", "", ""},
                                 {"Makefile", "#!/bin/sh", "Makefile"}}) {
            const auto found = library().detect(QString::fromLatin1(file.name), QString::fromLatin1(file.firstLine));
            QCOMPARE(found ? found->name : QString(), QLatin1String(file.type));
        }
    }
};

VELMORA_TEST(SyntaxCorpusTest)
#include "syntax_corpus_test.moc"
