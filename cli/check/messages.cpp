#include "check/messages.h"

#include <map>
#include <string>

#include "text.h"

namespace cli {

void checkMessages(const vel::XmlElement& root, std::set<vel::String>& keys, Findings& findings)
{
    std::map<std::wstring_view, const vel::XmlElement*> seen;
    for (const vel::XmlElement& message : vel::children(root)) {
        const std::wstring_view key = message.attribute(L"key");
        if (message.name() != L"message") {
            findings.add(message, {kWarning, "skipped-element",
                                   "<" + visibleText(message.name()) + "> is skipped: here stand <message> elements"});
        } else if (key.empty()) {
            findings.add(message, {kWarning, "message-without-key", "a message without a key is skipped: give it one"});
        } else if (const auto [before, isNew] = seen.emplace(key, &message); !isNew) {
            findings.add(message, {kWarning, "duplicate-message",
                                   "the message " + quotedName(key) + " replaces the one in line " +
                                       std::to_string(before->second->line()) + ": keep one of them"});
        } else {
            keys.emplace(key);
        }
    }
}

}  // namespace cli
