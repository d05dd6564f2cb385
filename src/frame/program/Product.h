#pragma once
// Facts about the product that texts, windows and written files quote. The one place to change them.
#include <string_view>

namespace brenvik::product {

inline constexpr std::string_view Titel = "Brenvik";               // title of boxes without one of their own
inline constexpr std::string_view WebAddress = "www.brenvik.example";
inline constexpr std::string_view WebUrl = "https://www.brenvik.example/";
inline constexpr std::string_view Mail = "support@brenvik.example";
inline constexpr std::string_view Rights = "Copyright (C) 2001-2002 Brenvik";
inline constexpr std::string_view ProgramDate = "09.11.2002";
inline constexpr std::string_view DriverWeb = "www.brenvik.example/treiber";           // about the database driver
inline constexpr std::string_view DriverDownload = "www.brenvik.example/treiber/mdac";  // its download

inline constexpr std::string_view HelpFile = "BRENVIK.hlp";
inline constexpr std::string_view OstranaHlp = "ostrana.hlp";       // companion help, old format
inline constexpr std::string_view OstranaChm = "ostrana.chm";       // companion help, new format
inline constexpr int OstranaContext = 125;
inline constexpr std::string_view OstranaUrl = "https://www.ostrana.example/";
inline constexpr std::string_view OstranaDownloadUrl = "https://www.ostrana.example/download";
inline constexpr std::string_view OstranaShopUrl = "https://www.ostrana.example/shop";
inline constexpr std::string_view ClickWav = "bvkklick.wav";
inline constexpr std::string_view LogFile = "brenvik.log";

}  // namespace brenvik::produkt
