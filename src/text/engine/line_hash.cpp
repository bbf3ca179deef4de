#include "text/engine/line_hash.h"

#include <QRandomGenerator>

namespace velmora {

LineHash::LineHash()
    : m_start(QRandomGenerator::global()->generate64()), m_secret(QRandomGenerator::global()->generate64())
{}

} // namespace velmora
