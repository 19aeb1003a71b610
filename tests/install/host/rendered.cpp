#include <iostream>

#include <webi18n-render/datepicture.h>
#include <webi18n-render/rendernumber.h>

// A foreign program of the renderer alone: the built-in locale needs no data.
int main()
{
    vel::StringBuffer<63> out;
    vel::DatePicture::append(L"dddd, MMMM d, yyyy", {2005, 12, 31, 0, 0, 0, 0}, vel::Locale::kUSA, out);
    out.append(L": ");
    vel::RenderNumber::append(vel::Decimal::ofInteger(-123456789, 2), vel::Locale::kUSA, {}, out);
    std::cout << vel::toUtf8Lossy(out.view()) << '\n';
}
