#pragma once

#include <QByteArrayView>
#include <QString>

namespace velmora {

/// Who made a signature of PKCS #7 (RFC 2315, in DER): the common name, or else the organisation, of the certificate
/// that its first signer names. Empty where there is none, or where the bytes are no such signature. Nothing is
/// verified.
[[nodiscard]] QString signerName(QByteArrayView signature);

} // namespace velmora
