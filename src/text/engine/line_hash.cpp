#include "text/engine/line_hash.h"

#include <QRandomGenerator>

namespace velmora {

// Not from the generator of the process: seeding it takes thousands of random bits, a quarter of a millisecond on some
// processors, and a small comparison takes little more.
LineHash::LineHash()
    : m_start(QRandomGenerator::system()->generate64()), m_secret(QRandomGenerator::system()->generate64())
{}

} // namespace velmora
