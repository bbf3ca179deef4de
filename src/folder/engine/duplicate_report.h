#pragma once

#include "core/output_buffer.h"
#include "folder/engine/duplicate_scan.h"

namespace velmora {

/// A line for each file: group (from 1), size, modification time, MD5, path. With a line of names, quoted as RFC 4180
/// has it, in UTF-8; times as "2026-01-31T12:00:00.000Z", the digest of a group as far as it has been computed.
void writeDuplicatesCsv(OutputBuffer &output, const QList<DuplicateGroup> &groups);

/// One JSON object:
///
///     {"files": all that were listed, "wasted": bytes that go when one copy of each group stays, "cancelled": false,
///      "groups": [{"size": of each, "md5": null before it is computed,
///                  "copies": [{"path", "modified", "reference": may not go, "link", "otherNames": [paths]}]}],
///      "manyNamed": [{"size", "paths": of one file}], "folders": [{"paths", "files": in each, "bytes": in each}],
///      "overlapping": [folders that lie in others], "problems": [{"path", "kind": "folder" or "file"}]}
void writeDuplicatesJson(OutputBuffer &output, const DuplicateScan &scan);

} // namespace velmora
