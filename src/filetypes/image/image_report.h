#pragma once

#include "filetypes/image/image_job.h"

class QIODevice;

namespace velmora {

/// What a report says; texts are translated.
struct ImageReport {
    Sides<QString> captions;
    QString verdict;
    QString tolerance;
    QList<KeyedRow> properties;
    QList<QRect> regions;
    std::shared_ptr<const ImageLevels> map;
};

/// Writes a page of HTML that needs no other file: the map is in it as PNG, made smaller when it is very large. False
/// when the device fails or the run is cancelled. For workers.
[[nodiscard]] bool writeImageReport(QIODevice &device, const ImageReport &report, const CancelFlag &cancel);

} // namespace velmora
