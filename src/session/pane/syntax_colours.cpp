#include "session/pane/syntax_colours.h"

namespace velmora {

namespace {

struct Ink {
    SyntaxRole role;
    QRgb light;
    QRgb dark;
};

constexpr QRgb none = 0;

constexpr std::array<Ink, syntaxRoleCount> inks = {{
    {SyntaxRole::Text, none, none},
    {SyntaxRole::Comment, 0xff515b64, 0xffb0b8c1},
    {SyntaxRole::String, 0xff2f6633, 0xff98c399},
    {SyntaxRole::Escape, 0xff585f0c, 0xffb4bc85},
    {SyntaxRole::Number, 0xff8a480f, 0xffe3ab86},
    {SyntaxRole::Keyword, 0xff2556b4, 0xff91b7fe},
    {SyntaxRole::Type, 0xff196467, 0xff8ec0c3},
    {SyntaxRole::Constant, 0xff8a480f, 0xffe3ab86},
    {SyntaxRole::Function, 0xff6a499b, 0xffc4adf0},
    {SyntaxRole::Preprocessor, 0xff903b70, 0xffeaa3ca},
    {SyntaxRole::Variable, 0xff953e32, 0xffefa598},
    {SyntaxRole::Tag, 0xff2556b4, 0xff91b7fe},
    {SyntaxRole::Attribute, 0xff196467, 0xff8ec0c3},
    {SyntaxRole::Heading, 0xff2556b4, 0xff91b7fe},
    {SyntaxRole::Inserted, 0xff2f6633, 0xff98c399},
    {SyntaxRole::Deleted, 0xff953e32, 0xffefa598},
}};

constexpr bool isInOrder()
{
    for (std::size_t k = 0; k < inks.size(); ++k) {
        if (std::size_t(inks[k].role) != k)
            return false;
    }
    return true;
}
static_assert(isInOrder(), "one ink for each role, in the order of the roles");

} // namespace

RoleInks syntaxInks(bool dark)
{
    RoleInks result;
    for (const Ink &ink : inks) {
        const QRgb colour = dark ? ink.dark : ink.light;
        if (colour != none)
            result[std::size_t(ink.role)] = QColor::fromRgb(colour);
    }
    return result;
}

} // namespace velmora
