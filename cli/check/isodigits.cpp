#include "check/isodigits.h"

namespace cli {

namespace {

constexpr int kNoMinorUnit = -1;

struct Row
{
    int m_nDigits;
    std::wstring_view m_sCodes;
};

// "List one: currency, fund and precious metal codes" of ISO 4217.
constexpr Row kRows[] = {
    {2,
     L"AED AFN ALL AMD ANG AOA ARS AUD AWG AZN BAM BBD BDT BGN BMD BND BOB BOV BRL BSD BTN BWP BYN BZD CAD CDF CHE CHF "
     L"CHW CNY COP COU CRC CUC CUP CVE CZK DKK DOP DZD EGP ERN ETB EUR FJD FKP GBP GEL GHS GIP GMD GTQ GYD HKD HNL HRK "
     L"HTG HUF IDR ILS INR IRR JMD KES KGS KHR KPW KYD KZT LAK LBP LKR LRD LSL MAD MDL MGA MKD MMK MNT MOP MRU MUR MVR "
     L"MWK MXN MXV MYR MZN NAD NGN NIO NOK NPR NZD PAB PEN PGK PHP PKR PLN QAR RON RSD RUB SAR SBD SCR SDG SEK SGD SHP "
     L"SLE SLL SOS SRD SSP STN SVC SYP SZL THB TJS TMT TOP TRY TTD TWD TZS UAH USD USN UYU UZS VED VES WST XCD YER ZAR "
     L"ZMW ZWL"},
    {0, L"BIF CLP DJF GNF ISK JPY KMF KRW PYG RWF UGX UYI VND VUV XAF XOF XPF"},
    {3, L"BHD IQD JOD KWD LYD OMR TND"},
    {4, L"CLF UYW"},
    {kNoMinorUnit, L"XAG XAU XBA XBB XBC XBD XDR XPD XPT XSU XTS XUA XXX"},
};

std::optional<int> find(std::wstring_view code) noexcept
{
    if (code.size() != 3 || code.find(L' ') != code.npos) {
        return std::nullopt;
    }
    for (const Row& row : kRows) {
        if (row.m_sCodes.find(code) != row.m_sCodes.npos) {
            return row.m_nDigits;
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<int> isoDigits(std::wstring_view code) noexcept
{
    const std::optional<int> digits = find(code);
    return digits == kNoMinorUnit ? std::nullopt : digits;
}

bool isWithoutIsoDigits(std::wstring_view code) noexcept
{
    return find(code) == kNoMinorUnit;
}

}  // namespace cli
