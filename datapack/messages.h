/// \file
/// The texts that the library's messages have in each language: messages/<language>/i18nmessages.xml.
#pragma once

#include <string>
#include <vector>

#include "internationalcurrencies.h"
#include "locales.h"

namespace datapack {

/// The languages that the pack has messages in, BCP 47 tags in the order of their code.
const std::vector<std::string>& messageLanguages();

/// A message file and how many messages it holds.
struct MessageFile
{
    std::string text;
    size_t count;
};

/// The message file of one of messageLanguages(): the name of every locale and the name and caption of every
/// currency in that language, and the texts of errors and headings, in English where no translation is at hand.
MessageFile messageFile(const std::string& language, const std::vector<PackLocale>& locales,
                        const std::vector<InternationalCurrency>& currencies);

/// The text of config.xml: every locale of the lists file is allowed, and every language that has messages.
std::string packConfiguration();

}  // namespace datapack
