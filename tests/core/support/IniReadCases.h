#pragma once
// Settings files as Windows programs and people leave them, and what reading one key gives: the
// settings code reads them as the Windows private-profile functions do. The cInifile tests read
// every case on each system; under Windows the same cases go to GetPrivateProfileStringW too.
namespace arden::test {

struct IniReadCase {
    const char* file;  // nullptr: there is no file
    const char* section;
    const char* key;
    const char* expected;  // "<default>" when the key is not found
};

inline const IniReadCase kIniReadCases[] = {
    {"; settings\r\n[General]\r\n  CreateBackups = 0  \r\n", "general", "createbackups", "0"},
    {"[General]\r\nimagepath=\"C:\\Images\\ \"\r\n", "General", "ImagePath", "C:\\Images\\ "},
    {"[General]\r\nImagePath='C:\\Images'\r\n", "General", "ImagePath", "C:\\Images"},
    {"[General]\r\nImagePath=\"C:\\Images\r\n", "General", "ImagePath", "\"C:\\Images"},
    {"[General]\r\nA=\"\r\n", "General", "A", "\""},
    {"[General]\r\nImagePath=C:\\Images ; old\r\n", "General", "ImagePath", "C:\\Images ; old"},
    {"[General]\r\nImagePath=\r\n", "General", "ImagePath", ""},
    {"[General]\r\nNote=a\tb\t\r\n", "General", "Note", "a\tb"},
    {"[General]\r\nA=x=y\r\n", "General", "A", "x=y"},
    {"[General]\r\nTwice=first\r\nTWICE=second\r\n", "General", "twice", "first"},
    {"[General]\r\nA=1\r\n[Other]\r\nX=1\r\n[General]\r\nB=2\r\n", "General", "B", "<default>"},
    {"[ Favorites ]\r\n; old entries\r\nFavorite0=A\tC:\\a.vmx\t7\r\n", "favorites", "FAVORITE0", "A\tC:\\a.vmx\t7"},
    {nullptr, "General", "CreateBackups", "<default>"},
};

}  // namespace arden::test
