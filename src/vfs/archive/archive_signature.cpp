#include "vfs/archive/archive_signature.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace velmora {

namespace {

using namespace std::string_view_literals;

struct Signature {
    std::string_view bytes;
    qsizetype at = 0;
};

// As the formats' own descriptions have them.
constexpr Signature signatures[] = {
    {"PK\3\4"sv},             // zip
    {"PK\5\6"sv},             // zip without entries
    {"PK\7\x08PK\3\4"sv},     // zip that was to be split
    {"7z\xBC\xAF\x27\x1C"sv}, //
    {"Rar!\x1A\x07"sv},       //
    {"MSCF\0\0\0\0"sv},       // cabinet
    {"xar!"sv},               //
    {"!<arch>\n"sv},          // ar, deb
    {"\xED\xAB\xEE\xDB"sv},   // rpm
    {"070701"sv},             // cpio
    {"070702"sv},             //
    {"070707"sv},             //
    {"\xC7\x71"sv},           // cpio, binary
    {"ustar"sv, 257},         // tar
    {"CD001"sv, 32769},       // ISO 9660
    {"-lh"sv, 2},             // LHA
    {"\x1F\x8B\x08"sv},       // gzip
    {"\x1F\x9D"sv},           // compress
    {"BZh"sv},                //
    {"\xFD"
     "7zXZ\0"sv},             //
    {"\x28\xB5\x2F\xFD"sv},   // zstd
    {"\x04\x22\x4D\x18"sv},   // lz4
    {"LZIP\1"sv},             //
    {"\x5D\0\0\x80\0\xFF"sv}, // lzma with the usual dictionary
};

} // namespace

bool beginsLikeArchive(QByteArrayView head)
{
    const std::string_view bytes(head.data(), std::size_t(head.size()));
    return std::any_of(std::begin(signatures), std::end(signatures), [bytes](const Signature &signature) {
        const auto at = std::size_t(signature.at);
        return bytes.size() > at && bytes.substr(at).starts_with(signature.bytes);
    });
}

} // namespace velmora
