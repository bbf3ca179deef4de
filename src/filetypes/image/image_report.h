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
    Sides<std::shared_ptr<const ImageLevels>> images;
};

/// Writes a page of HTML that needs no other file: the map and both images are in it as PNG, made smaller when they are
/// very large. False when the device fails or the run is cancelled. For workers.
[[nodiscard]] bool writeImageReport(QIODevice &device, const ImageReport &report, const CancelFlag &cancel);

} // namespace velmora
