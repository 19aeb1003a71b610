/// \file
/// Reads and renders the token language of the definitions' formats.
#pragma once

#include <string>
#include <vector>

#include "packfiles.h"

namespace shipped {

/// A piece of a format: a run of one ASCII letter outside quotes, or literal text.
struct FormatPiece
{
    bool isToken;
    std::string text;
};

/// The pieces of a format. \throws std::runtime_error when a quote is not closed.
std::vector<FormatPiece> formatPieces(const std::string& format);

/// Whether the run of letters is a token of the language.
bool isLegalToken(const std::string& token);

/// A moment to render. Days of the week count from 0 = Monday, months from 1.
struct Moment
{
    int year;
    int month;
    int day;
    int weekday;
    int hour;
    int minute;
    int second;
};

/// The moment in the format, with the locale's names and markers.
std::string render(const std::string& format, const Loaded& locale, const Moment& moment);

}  // namespace shipped
