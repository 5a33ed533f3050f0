// The eleven tags whose text is a header field of a stored game, with the
// field code that holds each: the builder stores them, the conversion to a
// PgnGame reads them back.
#ifndef ORVAN_PGN_READ_TEXT_TAG_FIELDS_H
#define ORVAN_PGN_READ_TEXT_TAG_FIELDS_H

#include <array>
#include <cstdint>

#include "orvan.h"
#include "pgn/pgn_game.h"

struct TextTagField {
    PgnTagNumber tag;
    int32_t field;
};

inline constexpr std::array<TextTagField, 11> TextTagFields = {{
    {TagEvent, HdrPlace},
    {TagSite, HdrSite},
    {TagWhite, HdrWhite},
    {TagBlack, HdrBlack},
    {TagWhiteCountry, HdrWhiteCountry},
    {TagBlackCountry, HdrBlackCountry},
    {TagWhiteTitle, HdrWhiteTitle},
    {TagBlackTitle, HdrBlackTitle},
    {TagEco, HdrKeycode},
    {TagAnnotator, HdrAnnotator},
    {TagRemark, HdrRemark},
}};

#endif
