#include "plainxml.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace shipped {
namespace {

class Reader
{
public:
    Reader(const std::string& path, const std::string& bytes) : m_sPath(path), m_sBytes(bytes) {}

    Element document()
    {
        skipDeclaration();
        skipBlanks();
        Element root = element();
        skipBlanks();
        require(m_nAt == m_sBytes.size(), "text behind the root element");
        return root;
    }

private:
    void require(bool isTrue, const std::string& what) const
    {
        if (!isTrue) {
            throw std::runtime_error(m_sPath + ": offset " + std::to_string(m_nAt) + ": " + what);
        }
    }

    bool isNext(const std::string& text) const { return m_sBytes.compare(m_nAt, text.size(), text) == 0; }

    void expect(const std::string& text)
    {
        require(isNext(text), "expected " + text);
        m_nAt += text.size();
    }

    void skipDeclaration()
    {
        expect("<?xml ");
        m_nAt = m_sBytes.find("?>", m_nAt);
        require(m_nAt != std::string::npos, "unfinished declaration");
        m_nAt += 2;
    }

    void skipBlanks() { m_nAt = std::min(m_sBytes.find_first_not_of(" \n", m_nAt), m_sBytes.size()); }

    std::string until(const std::string& stops)
    {
        const size_t end = m_sBytes.find_first_of(stops, m_nAt);
        require(end != std::string::npos, "expected one of " + stops);
        std::string text = m_sBytes.substr(m_nAt, end - m_nAt);
        m_nAt = end;
        return text;
    }

    std::string unescaped(const std::string& raw) const
    {
        static const std::map<std::string, std::string> entities = {
            {"amp", "&"}, {"lt", "<"}, {"gt", ">"}, {"quot", "\""}, {"apos", "'"}};
        std::string text;
        for (size_t index = 0; index < raw.size(); ++index) {
            if (raw[index] != '&') {
                text += raw[index];
                continue;
            }
            const size_t end = raw.find(';', index);
            require(end != std::string::npos, "unfinished entity");
            text += entities.at(raw.substr(index + 1, end - index - 1));
            index = end;
        }
        return text;
    }

    Element element()
    {
        expect("<");
        Element result;
        result.name = until(" />");
        while (isNext(" ")) {
            ++m_nAt;
            const std::string name = until("=");
            expect("=\"");
            result.attributes[name] = unescaped(until("\""));
            expect("\"");
        }
        if (isNext("/>")) {
            m_nAt += 2;
            return result;
        }
        expect(">");
        content(result);
        expect("</" + result.name + ">");
        return result;
    }

    void content(Element& result)
    {
        while (true) {
            result.text += unescaped(until("<"));
            if (isNext("</")) {
                return;
            }
            result.children.push_back(element());
        }
    }

    std::string m_sPath;
    const std::string& m_sBytes;
    size_t m_nAt = 0;
};

}  // namespace

std::string Element::attribute(const std::string& attributeName) const
{
    const auto found = attributes.find(attributeName);
    return found == attributes.end() ? std::string() : found->second;
}

std::string readBytes(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        throw std::runtime_error("cannot read " + path);
    }
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

Element readXml(const std::string& path)
{
    const std::string bytes = readBytes(path);
    return Reader(path, bytes).document();
}

}  // namespace shipped
