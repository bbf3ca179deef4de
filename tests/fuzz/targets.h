#pragma once

#include <QByteArray>

#include <span>

namespace velmora::fuzz {

/// What is done with the bytes of one input, whatever they are. Throws std::logic_error where a promise is broken.
struct Target {
    const char *name; ///< of its folder in corpus/, too
    void (*run)(const QByteArray &input);
};

/// One for each parser of the program.
[[nodiscard]] std::span<const Target> targets();

/// Throws unless `holds`; `promise` says what ought to be.
void require(bool holds, const char *promise);

void text(const QByteArray &input);
void compare(const QByteArray &input);
void journal(const QByteArray &input);
void snapshot(const QByteArray &input);
void folderSnapshot(const QByteArray &input);
void remoteListing(const QByteArray &input);
void remoteTree(const QByteArray &input);
void options(const QByteArray &input);
void importance(const QByteArray &input);
void syntaxDefinition(const QByteArray &input);
void syntaxScanner(const QByteArray &input);
void mask(const QByteArray &input);
void name(const QByteArray &input);
void checksumList(const QByteArray &input);
void sessionFile(const QByteArray &input);
void table(const QByteArray &input);
void conflictMarkers(const QByteArray &input);
void program(const QByteArray &input);
void registry(const QByteArray &input);
void archive(const QByteArray &input);
void gitListing(const QByteArray &input);
void song(const QByteArray &input);

} // namespace velmora::fuzz
