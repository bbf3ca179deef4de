#pragma once

namespace velmora {

class DiffDocument;
class PaneScene;
struct SessionPaths;
struct TextSessionOptions;

/// Chooses how the texts of a comparison are coloured, and tells `scene`.
///
/// A side has the file type of the options. Where these leave it open, its name decides, or else its first line; a side
/// of which neither says anything is coloured as the other one. A type that is not known leaves its side plain.
void chooseSyntax(PaneScene &scene, const DiffDocument &document, const TextSessionOptions &options,
                  const SessionPaths &paths);

} // namespace velmora
