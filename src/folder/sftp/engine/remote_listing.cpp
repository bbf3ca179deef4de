#include "folder/sftp/engine/remote_listing.h"

#include "platform/file_access.h"
#include "vfs/safe_name.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace velmora {

namespace {

/// A line taken apart.
struct Line {
    std::string_view path;
    qint64 size;
    bool isStats; ///< of the second form for sure
};

std::optional<qint64> sizeOf(std::string_view digits)
{
    constexpr std::size_t longest = 18; // fits into 64 bits
    if (digits.empty() || digits.size() > longest ||
        !std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return std::nullopt;
    qint64 size = 0;
    for (const char digit : digits)
        size = size * 10 + (digit - '0');
    return size;
}

std::optional<Line> takeApart(std::string_view line)
{
    for (const std::string_view separator : {std::string_view("\t"), std::string_view("\\t")}) {
        const std::size_t at = line.rfind(separator);
        if (at == std::string_view::npos)
            continue;
        if (const auto size = sizeOf(line.substr(at + separator.size())))
            return Line{line.substr(0, at), *size, separator.size() > 1};
    }
    return std::nullopt;
}

class Parser {
public:
    explicit Parser(const QString &folder) : m_folder(nativeName(folder))
    {
        while (m_folder.size() > 1 && m_folder.back() == '/')
            m_folder.pop_back();
    }

    void take(std::string_view text)
    {
        const std::optional<Line> line = takeApart(text);
        if (!line) {
            m_isBroken = true;
            return;
        }
        const bool isRest = std::exchange(m_isBroken, false);
        const QString path = nameFromNative(relative(*line));
        if (isRest || path.contains(u'\t') || !staysInFolder(path))
            ++m_listing.unlisted;
        else
            m_listing.files.push_back({path, line->size});
    }

    RemoteListing finish()
    {
        m_listing.unlisted += m_isBroken;
        auto &files = m_listing.files;
        std::stable_sort(files.begin(), files.end(),
                         [](const ListedSize &one, const ListedSize &other) { return one.path < other.path; });
        const auto isRepeated = [](const ListedSize &one, const ListedSize &other) { return one.path == other.path; };
        files.erase(std::unique(files.begin(), files.end(), isRepeated), files.end());
        return std::move(m_listing);
    }

private:
    /// A path of the first form is relative already, and begins neither with "/" nor with "." as a part. Of a folder
    /// that is relative itself nobody can tell by the path which form it is; the separator that stat writes does.
    [[nodiscard]] std::string_view relative(const Line &line) const
    {
        const bool isTelling =
            m_folder.front() == '/' || m_folder == "." || m_folder.starts_with("./") || m_folder.starts_with("../");
        if ((!isTelling && !line.isStats) || line.path.substr(0, m_folder.size()) != m_folder)
            return line.path;
        std::string_view rest = line.path.substr(m_folder.size());
        if (m_folder != "/" && (rest.empty() || rest.front() != '/'))
            return line.path;
        while (!rest.empty() && rest.front() == '/')
            rest.remove_prefix(1);
        return rest;
    }

    std::string m_folder;
    RemoteListing m_listing;
    bool m_isBroken = false; ///< the lines before this one have no size
};

} // namespace

RemoteListing parseRemoteListing(const QByteArray &output, const QString &folder)
{
    Parser parser(folder);
    std::string_view rest(output.constData(), std::size_t(output.size()));
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        parser.take(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return parser.finish();
}

} // namespace velmora
