// How a server starts the library, serves on two threads, and stops: embed_server_startup DATAFOLDER
// The order matters and is the whole of it; docs/threads.md says why.

#include <cstdlib>
#include <exception>
#include <iostream>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>

#include <vel/config/configreader.h>
#include <vel/log/logger.h>
#include <vel/messages/messagefilesregistry.h>
#include <vel/messages/messageformatter.h>
#include <vel/xml/xmlexception.h>
#include <webi18n/charactersetresolver.h>
#include <webi18n/collator.h>
#include <webi18n/currencylookup.h>
#include <webi18n/languagelists.h>
#include <webi18n/localemapping.h>
#include <webi18n/parsedatetime.h>

namespace {

/// Warnings go to standard error. Threads log at the same time, so it locks.
class WarningSink final : public vel::LogSink
{
public:
    vel::LogSeverity leastSeverity() const noexcept override { return vel::kLogWarning; }
    void write(const vel::LogRecord& record) override
    {
        const std::lock_guard<std::mutex> lock(m_tMutex);
        std::cerr << vel::toUtf8Lossy(record.m_tMessage.toString()) << '\n';
    }

private:
    std::mutex m_tMutex;
};

/// What requests read. One thread fills it before the others start; then nothing changes it. The process's own
/// catalogues (locales, currencies) are filled at the same time.
struct Server
{
    // Before all that needs the language service, and so gone after it.
    vel::Handle<vel::i18n::NLSEnvironment> m_hLanguageService;
    vel::LocaleMapping m_tMapping;
    vel::CharacterSetResolver m_tCharacterSets;
    vel::Handle<const vel::CharacterSetList> m_hSupportedSets;
    std::map<vel::String, vel::Handle<const vel::MessageTable>> m_tMessages;
};

/// What the loaders leave out they only log: what a server cannot do without it has to ask for.
void require(bool condition, const char* what)
{
    if (!condition) {
        throw std::runtime_error(what);
    }
}

void loadLocales(const vel::ConfigReader& config, const vel::String& data, Server& server)
{
    vel::LocaleTagLookup& catalogue = vel::LocaleTagLookup::getInstanceForLoading();
    catalogue.loadLocaleDefinitions(config, data + L"/localedefinitions.xml");
    // Files of the installation's own follow here, each on top of those before it.
    std::vector<vel::Locale> allowed;
    catalogue.getSupportedLocales(allowed);
    require(!allowed.empty(), "the configuration allows no locale that is defined");
    server.m_tMapping.loadMappings(data + L"/localemapping.xml");
}

void loadCharacterSets(const vel::String& data, Server& server)
{
    server.m_tCharacterSets.loadCharacterSetDefinitions(data + L"/charactersets.xml");
    server.m_tCharacterSets.loadCharacterSetLists(data + L"/charactersetlists.xml");  // they name definitions
    const auto& lists = server.m_tCharacterSets.getCharacterSetLists();
    const auto supported = lists.find(L"supported");
    require(supported != lists.end(), "there is no list 'supported' of character sets");
    server.m_hSupportedSets = supported->second;
}

void loadMessages(const vel::ConfigReader& config, const vel::String& data, Server& server)
{
    vel::LanguageLists languages;
    languages.loadConfig(config, vel::kConfigInitialize);
    std::vector<vel::String> supported;
    languages.getSupportedLanguageList(supported);
    for (const vel::String& language : supported) {
        server.m_tMessages[language] =
            vel::MessageFilesRegistry::getInstance().loadTable(vel::FilePath(data + L"/messages"), language);
    }
}

std::unique_ptr<Server> start(const vel::String& data)
{
    auto server = std::make_unique<Server>();
    server->m_hLanguageService = vel::i18n::NLSEnvironment::getEnvironmentGuard();
    const vel::XmlConfigReader config(data + L"/config.xml");
    loadLocales(config, data, *server);
    vel::CurrencyLookup::getInstance().loadCurrencies(data + L"/currencies.xml");
    loadCharacterSets(data, *server);
    loadMessages(config, data, *server);
    return server;
}

struct Request
{
    vel::String m_sAcceptLanguage;
    vel::String m_sDateSeparator;  // the user's own, or empty
    vel::String m_sTypedDate;
    vel::String m_sCurrency;
};

/// What a currency is called in a language of the server; its tag where nothing is known.
vel::String nameOf(const vel::String& tag, const vel::String& language, const Server& server)
{
    const vel::Handle<const vel::Currency> currency = vel::CurrencyLookup::getInstance().lookupCurrencyTag(tag);
    if (currency.isNull()) {
        return tag;
    }
    const auto messages = server.m_tMessages.find(language);
    const auto table = messages == server.m_tMessages.end() ? vel::Handle<const vel::MessageTable>() : messages->second;
    vel::GDVariant name;
    currency->getResolvedCurrencyDisplayName(table, name);
    return name.asMessage() == nullptr ? tag : vel::MessageFormatter(table).format(*name.asMessage());
}

vel::String dateOf(const vel::DateTime& date)
{
    const auto number = [](unsigned value) { return vel::decimalString(value); };
    return number(static_cast<unsigned>(date.m_nYear)) + L"-" + number(date.m_nMonth) + L"-" + number(date.m_nDay);
}

vel::String bodyOf(const Request& request, const vel::Locale& locale, const vel::String& language, const Server& server)
{
    vel::String text = vel::String(L"  enter dates as ") + locale.getInfoAsString(vel::Locale::kDateInputFormat);
    vel::DateTime date;
    const auto fields = vel::ParseDateTime::parse(request.m_sTypedDate, locale, vel::ParseDateTime::kDate, date);
    text += L"; " + request.m_sTypedDate + L" is " +
            (fields == vel::ParseDateTime::kDate ? dateOf(date) : vel::String(L"no date"));
    return text + L"\n  " + request.m_sCurrency + L" is " + nameOf(request.m_sCurrency, language, server) + L"\n";
}

/// The text in the character set that the server supports and readers of the locale prefer.
vel::NarrowString encoded(const vel::String& text, const vel::Locale& locale, const Server& server)
{
    const auto& lists = server.m_tCharacterSets.getCharacterSetLists();
    const auto preferred = lists.find(locale.getInfoAsString(vel::Locale::kCharactersetList));
    const auto charset = server.m_tCharacterSets.getPreferredCharacterSet(
        *server.m_hSupportedSets, preferred == lists.end() ? *server.m_hSupportedSets : *preferred->second);
    vel::NarrowString bytes;
    charset->getTranscoding().encode(text, bytes);
    return bytes;
}

/// What it reads of the server and of the process's catalogues needs no lock.
vel::NarrowString answer(const Server& server, vel::i18n::NLSThreadContext& context, const Request& request)
{
    auto [locale, language] = server.m_tMapping.mapLocale(request.m_sAcceptLanguage, L"");
    // The request's own copy: nobody else sees the override.
    locale.setOverridingDateInputFormat(request.m_sDateSeparator, vel::Locale::kDateOrderEnd_);

    vel::i18n::Collator collator(context, locale, vel::i18n::kCollationStrengthDefault);
    const bool isBefore = collator.compare(L"côte", L"coté") < 0;
    const vel::String head = request.m_sAcceptLanguage + L" -> " + locale.definitionName() + L", language " + language;
    const vel::String sorted = isBefore ? L"  côte stands before coté" : L"  coté stands before côte";
    return encoded(head + L"\n" + bodyOf(request, locale, language, server) + sorted, locale, server);
}

/// One thread's work. An exception must not leave a thread.
void serve(const Server& server, const Request& request, vel::NarrowString& rAnswer)
{
    try {
        // A context belongs to its thread, and must be gone before the language service is.
        vel::i18n::NLSThreadContext context(vel::i18n::NLSEnvironment::getDefaultEnvironment());
        rAnswer = answer(server, context, request);
    } catch (const std::exception& fault) {
        rAnswer = fault.what();
    } catch (const wchar_t* fault) {
        rAnswer = vel::toUtf8Lossy(fault);
    }
}

void run(const Server& server)
{
    const Request requests[] = {{L"fr-CA,fr;q=0.9", L".", L"2005.12.31", L"CAD"},
                                {L"en-GB,en;q=0.9", L"", L"31/12/2005", L"JPY"}};
    vel::NarrowString answers[2];
    std::thread first(serve, std::cref(server), std::cref(requests[0]), std::ref(answers[0]));
    std::thread second(serve, std::cref(server), std::cref(requests[1]), std::ref(answers[1]));
    first.join();
    second.join();
    std::cout << answers[0].view() << '\n' << answers[1].view() << '\n';
}

int fail(const char* reason)
{
    std::cerr << "cannot start: " << reason << '\n';
    return EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv)
{
    const auto data = argc == 2 ? vel::stringFromUtf8(argv[1]) : std::nullopt;
    if (!data) {
        return fail("name the data folder");
    }
    // First of all, so that what the loaders skip is heard of.
    vel::Logger::setSink(vel::makeHandle<WarningSink>());
    try {
        const std::unique_ptr<const Server> server = start(*data);
        run(*server);
    } catch (const vel::XmlException& fault) {
        return fail(fault.what());  // file:line:column: error: what to mend
    } catch (const std::exception& fault) {
        return fail(fault.what());
    } catch (const wchar_t*) {
        return fail("the language service has no data");  // what it throws is the text "error"
    }
    vel::Logger::setSink({});
    return EXIT_SUCCESS;
}
