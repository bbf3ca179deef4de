#include "platform/program_output.h"

#include <string>

#include <windows.h>

namespace velmora {

QString decodeProgramOutput(const QByteArray &output)
{
    const auto convert = [&output](wchar_t *to, int room) {
        return MultiByteToWideChar(CP_OEMCP, 0, output.constData(), int(output.size()), to, room);
    };
    std::wstring text(std::size_t(convert(nullptr, 0)), L'\0');
    convert(text.data(), int(text.size()));
    return QString::fromStdWString(text);
}

} // namespace velmora
