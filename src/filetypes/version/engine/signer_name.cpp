#include "filetypes/version/engine/signer_name.h"

#include <QStringDecoder>

#include <optional>

namespace velmora {

namespace {

/// Tags of DER (X.690).
enum Tag : quint8 {
    Integer = 0x02,
    Identifier = 0x06,
    Utf8String = 0x0c,
    BmpString = 0x1e,
    Sequence = 0x30,
    Set = 0x31,
    Context0 = 0xa0,
};

struct DerItem {
    quint8 tag = 0;
    QByteArrayView content;
};

/// Goes through the items of one level.
class DerReader {
public:
    explicit DerReader(QByteArrayView bytes) : m_rest(bytes) {}

    /// The next item; nothing at the end, and where what follows is none.
    std::optional<DerItem> next()
    {
        if (m_rest.size() < 2)
            return std::nullopt;
        const quint8 tag = quint8(m_rest[0]);
        quint64 length = quint8(m_rest[1]);
        qsizetype head = 2;
        if (length >= 0x80) {
            const int digits = int(length & 0x7f);
            if (digits == 0 || digits > 4 || m_rest.size() < head + digits)
                return std::nullopt;
            length = 0;
            for (int k = 0; k < digits; ++k)
                length = length << 8 | quint8(m_rest[head++]);
        }
        if (length > quint64(m_rest.size() - head))
            return std::nullopt;
        const DerItem item{tag, m_rest.sliced(head, qsizetype(length))};
        m_rest = m_rest.sliced(head + qsizetype(length));
        return item;
    }

    /// The content of the next item of that tag, past others; empty when there is none.
    QByteArrayView find(quint8 tag)
    {
        while (const std::optional<DerItem> item = next()) {
            if (item->tag == tag)
                return item->content;
        }
        return {};
    }

private:
    QByteArrayView m_rest;
};

QString textOf(const DerItem &item)
{
    if (item.tag == BmpString)
        return QStringDecoder(QStringDecoder::Utf16BE).decode(item.content);
    return item.tag == Utf8String ? QString::fromUtf8(item.content) : QString::fromLatin1(item.content);
}

/// The part of a distinguished name with the identifier 2.5.4.`kind`.
QString namePart(QByteArrayView name, char kind)
{
    const char wanted[] = {0x55, 0x04, kind};
    DerReader parts(name);
    while (const std::optional<DerItem> part = parts.next()) {
        DerReader pair(DerReader(part->content).find(Sequence));
        const QByteArrayView identifier = pair.find(Identifier);
        const std::optional<DerItem> value = pair.next();
        if (value && identifier == QByteArrayView(wanted, sizeof wanted))
            return textOf(*value);
    }
    return {};
}

struct Certificate {
    QByteArrayView serial;
    QByteArrayView issuer;
    QByteArrayView subject;
};

Certificate certificateIn(QByteArrayView content)
{
    DerReader fields(DerReader(content).find(Sequence));
    Certificate certificate;
    certificate.serial = fields.find(Integer); // past the version, which is marked as optional
    fields.find(Sequence);                     // the algorithm
    certificate.issuer = fields.find(Sequence);
    fields.find(Sequence); // the time it is valid for
    certificate.subject = fields.find(Sequence);
    return certificate;
}

} // namespace

QString signerName(QByteArrayView signature)
{
    DerReader contentInfo(DerReader(signature).find(Sequence));
    DerReader signedData(DerReader(contentInfo.find(Context0)).find(Sequence));
    signedData.find(Sequence); // what is signed
    DerReader certificates(signedData.find(Context0));
    DerReader signerInfo(DerReader(signedData.find(Set)).find(Sequence));
    DerReader wanted(signerInfo.find(Sequence));
    const QByteArrayView issuer = wanted.find(Sequence);
    const QByteArrayView serial = wanted.find(Integer);
    if (serial.isEmpty())
        return {};
    for (QByteArrayView next = certificates.find(Sequence); !next.isEmpty(); next = certificates.find(Sequence)) {
        const Certificate certificate = certificateIn(next);
        if (certificate.serial != serial || certificate.issuer != issuer)
            continue;
        constexpr char commonName = 3;
        constexpr char organisation = 10;
        const QString name = namePart(certificate.subject, commonName);
        return name.isEmpty() ? namePart(certificate.subject, organisation) : name;
    }
    return {};
}

} // namespace velmora
