#pragma once

#include "core/text_file.h"

#include <QByteArray>
#include <QString>

class QIODevice;

namespace velmora::cli {

struct Streams;

/// One of the two texts of a comparison.
struct TextInput {
    QString path;          ///< "-" for standard input
    QString name;          ///< what it is called in headers
    TextEncoding encoding; ///< as asked for
    QByteArray raw;        ///< the bytes as they were read
    DecodedText text;
    QString error; ///< why there is no text, empty when there is one
};

/// Reads a file that the user names, a pipe too: the shell makes one for "<(command)". "/dev/null" is empty everywhere:
/// git names a file so that is not there.
[[nodiscard]] FileContents readGivenPath(const QString &path);
/// The same, or, for the path "-", all of standard input.
[[nodiscard]] FileContents readGivenPath(const QString &path, QIODevice &standardInput);

/// Reads and decodes both texts, large ones at the same time. Standard input is read once even when it is both of them.
void readTextInputs(TextInput &left, TextInput &right, QIODevice &standardInput);

/// Tells on the error stream where a text is not what its encoding knows.
void warnOfUndecodable(const Streams &streams, const TextInput &input);

} // namespace velmora::cli
