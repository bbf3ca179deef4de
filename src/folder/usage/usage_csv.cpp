#include "folder/usage/usage_csv.h"

#include "core/output_buffer.h"

#include <QDir>

namespace velmora {

bool writeUsageCsv(const UsageResult &result, QIODevice &device, const CancelFlag &cancel)
{
    const UsageRows rows(SharedUsage(SharedUsage(), &result));
    const UsageTree &tree = result.usage.tree;
    OutputBuffer output(device);
    output << "name,size,percent,files,folders,path\n";
    for (qint32 node = 0; node < tree.size() && !cancel.isCancelled(); ++node) {
        QString line(tree.node(node).depth, u' ');
        for (const int column :
             {UsageRows::Name, UsageRows::Size, UsageRows::Share, UsageRows::Files, UsageRows::Subfolders})
            line += rows.text(node, column) + u',';
        line += QDir::toNativeSeparators(tree.path(node)) + u'\n';
        output.bytes() += line.toUtf8();
        output.passOn();
    }
    return output.finish() && !cancel.isCancelled();
}

} // namespace velmora
