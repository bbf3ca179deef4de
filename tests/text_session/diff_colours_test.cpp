#include "session/diff_colours.h"
#include "support/contrast.h"
#include "support/test_main.h"

using namespace velmora;
using namespace velmora::test;

namespace {

using Vector = std::array<double, 3>;
using Matrix = std::array<Vector, 3>;

struct Eyes {
    const char *name;
    Matrix seen; ///< what the eyes make of linear red, green and blue
};

// Machado, Oliveira, Fernandes: "A Physiologically-based Model for Simulation of Color Vision Deficiency" (2009),
// severity 1.
constexpr std::array<Eyes, 4> allEyes = {{
    {"normal", {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}},
    {"protan", {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}}},
    {"deutan", {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}}},
    {"tritan", {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}}},
}};

Vector product(const Matrix &matrix, const Vector &v)
{
    Vector result{};
    for (std::size_t row = 0; row < 3; ++row)
        result[row] = matrix[row][0] * v[0] + matrix[row][1] * v[1] + matrix[row][2] * v[2];
    return result;
}

/// CIE L*a*b* under D65.
Vector lab(const QColor &colour, const Matrix &eyes)
{
    constexpr Matrix toXyz = {
        {{0.4124564, 0.3575761, 0.1804375}, {0.2126729, 0.7151522, 0.0721750}, {0.0193339, 0.1191920, 0.9503041}}};
    Vector seen = product(eyes, linear(colour));
    for (double &channel : seen)
        channel = std::clamp(channel, 0.0, 1.0);
    const Vector xyz = product(toXyz, seen);
    const auto f = [](double t) { return t > 0.008856 ? std::cbrt(t) : 7.787 * t + 16.0 / 116; };
    const double x = f(xyz[0] / 0.95047);
    const double y = f(xyz[1]);
    const double z = f(xyz[2] / 1.08883);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

double distance(const QColor &a, const QColor &b, const Matrix &eyes)
{
    const Vector p = lab(a, eyes);
    const Vector q = lab(b, eyes);
    return std::hypot(p[0] - q[0], p[1] - q[1], p[2] - q[2]);
}

/// Two colours and a place for what is between them.
QString named(DiffColour a, DiffColour b, bool dark)
{
    return QStringLiteral("%1 and %2, dark %3: %4").arg(int(a)).arg(int(b)).arg(dark);
}

} // namespace

class DiffColoursTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void textAndFrameAreSeenOnEveryBackground()
    {
        using enum DiffColour;
        struct Pairs {
            DiffColour above;
            double least;
            QList<DiffColour> below;
        };
        const QList<Pairs> all = {
            {Text,
             4.5,
             {Background, Gutter, Added, Removed, Modified, AddedStrong, RemovedStrong, ModifiedStrong, Unimportant,
              SearchHit, Filler}},
            {MutedText, 4.5, {Background, Gutter, Unimportant}},
            {SelectedText, 4.5, {Selection}},
            {Accent, 3, {Background, Gutter, Added, Removed, Modified, Unimportant, Filler}},
        };
        for (const bool dark : {false, true}) {
            for (const auto &[above, least, below] : all) {
                for (const DiffColour background : below) {
                    const double ratio = contrast(diffColour(above, dark), diffColour(background, dark));
                    QVERIFY2(ratio >= least, qPrintable(named(above, background, dark).arg(ratio)));
                }
            }
        }
    }

    void meaningsStayApartForAllEyes()
    {
        using enum DiffColour;
        const QList<std::pair<DiffColour, QList<DiffColour>>> pairs = {
            {SearchHit, {Background, Added, Removed, Modified, Unimportant, ModifiedStrong, Selection}},
            {ModifiedStrong, {Selection, Modified, Gutter, AddedStrong, RemovedStrong}},
            {Unimportant, {Added, Removed, Modified}},
            {Background, {Added, Removed, Modified}},
            {Added, {Removed, Modified, AddedStrong}},
            {Removed, {Modified, RemovedStrong}},
            {Gutter, {AddedStrong, RemovedStrong}},
            {AddedStrong, {RemovedStrong}},
        };
        for (const bool dark : {false, true}) {
            for (const Eyes &eyes : allEyes) {
                for (const auto &[a, others] : pairs) {
                    for (const DiffColour b : others) {
                        const double apart = distance(diffColour(a, dark), diffColour(b, dark), eyes.seen);
                        QVERIFY2(apart >= 8, qPrintable(named(a, b, dark).arg(apart) + QLatin1String(eyes.name)));
                    }
                }
            }
        }
    }

    void unimportantRowsAreFainterThanAllOthersButSeen()
    {
        using enum DiffColour;
        for (const bool dark : {false, true}) {
            for (const Eyes &eyes : allEyes) {
                const auto fromBackground = [&](DiffColour role) {
                    return distance(diffColour(Background, dark), diffColour(role, dark), eyes.seen);
                };
                QVERIFY2(fromBackground(Unimportant) >= 6, eyes.name);
                for (const DiffColour role : {Added, Removed, Modified})
                    QVERIFY2(fromBackground(role) > 1.5 * fromBackground(Unimportant), eyes.name);
            }
        }
    }
};

VELMORA_TEST(DiffColoursTest)
#include "diff_colours_test.moc"
