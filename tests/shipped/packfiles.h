/// \file
/// The pack's files as the tests see them, with a small interpreter of the loading rules.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "plainxml.h"

namespace shipped {

/// What a loaded definition holds.
struct Loaded
{
    std::map<std::string, std::string> scalars;
    std::map<std::string, std::vector<std::string>> lists;
    std::vector<std::pair<std::string, std::string>> scaleFactors;

    std::string scalar(const std::string& name) const;
    std::vector<std::string> list(const std::string& name) const;
    /// The month name of a date: the genitive one, or the plain one where there are no genitives.
    std::string monthInDate(size_t index) const;
};

struct Rule
{
    std::string pattern;
    std::string target;
};

/// The path of a file of the pack.
std::string packFile(const std::string& name);

/// The root of localedefinitions.xml, read once.
const Element& definitions();

/// Every definition by name after loading all of them in order, each on top of its base; read once.
const std::map<std::string, Loaded>& loadedLocales();

/// The elements of currencies.xml in order, read once.
const std::vector<Element>& currencies();

/// The rules of localemapping.xml in order, read once.
const std::vector<Rule>& rules();

/// The definition that the first matching rule leads to; empty when none matches.
std::string mapTag(const std::string& tag);

}  // namespace shipped
