// Whatever stands in the registry, the Tip that shows it comes on screen within a bound, and showing it changes nothing.
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSlider>

#include "WindowFixture.h"
#include "shell/panels/TextField.h"
#include "tipengine/EngineFixture.h"

namespace brenvik::test {
namespace {

constexpr int BoundMs = 15'000;           // a hang, not a slow machine
constexpr const char* Key = "Software\\Probe";

Bytes utf16(std::u16string_view text) {
    Bytes bytes;
    for (const char16_t unit : text) {
        bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
    }
    return bytes;
}

Bytes repeated(const Bytes& part, std::size_t size) {
    Bytes bytes;
    while (bytes.size() < size) bytes.insert(bytes.end(), part.begin(), part.end());
    return bytes;
}

// The large ones only for types with a text form of their own: all others are shown as bytes.
std::vector<Bytes> extremes(std::uint32_t type) {
    std::vector<Bytes> all = {{}, {0x41}, {0xFF, 0xFF, 0xFF}, utf16(u"<b>&lt;</b>"), utf16(u"\x00e4\x0001\r\n\x2028\x00a0\xd800\x202e")};
    for (const std::uint32_t number : {0u, 1u, 0x7FFFFFFCu, 0x7FFFFFFDu, 0x7FFFFFFEu, 0x7FFFFFFFu, 0x80000000u, 0x80000001u, 0xFFFFFFFFu}) {
        all.push_back({static_cast<std::uint8_t>(number), static_cast<std::uint8_t>(number >> 8), static_cast<std::uint8_t>(number >> 16),
                       static_cast<std::uint8_t>(number >> 24)});
        const std::string digits = std::to_string(static_cast<std::int32_t>(number));
        all.push_back(utf16(std::u16string(digits.begin(), digits.end())));
    }
    constexpr std::size_t Large = 1u << 20;
    all.emplace_back(Large + 1, std::uint8_t{0xFF});
    if (type != regtype::Sz && type != regtype::Binary && type != regtype::Dword && type != regtype::MultiSz) return all;
    for (const char16_t* part : {u"A", u"\n", u"\0a", u"\xd83d\xde00"})
        all.push_back(repeated(utf16(std::u16string_view(part, part[0] == 0 ? 2 : std::char_traits<char16_t>::length(part))), Large));
    for (const char16_t* part : {u"\x0301", u"\x05d0", u"\xd83d\xde00", u"1\n"})   // as much as a field takes whole
        all.push_back(repeated(utf16(part), 60'000));
    return all;
}

// A Tip of each kind, with the data type that it expects in the registry; INI and boot files have tests of their own.
std::vector<Zeile> tipsOfType(int type) {
    std::vector<Zeile> rows;
    for (const std::int16_t kind : {1, 2, 3, 4, 5, 6, 7, 8, 10, 11}) {
        static const char* const headings[] = {"", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11"};
        Zeile row{.Index = kind, .Überschrift = headings[kind], .Ausgabeart = kind, .Datentyp = type, .WertEin = "100", .WertAus = "0", .Anzeigetext = "eins#zwei#drei"};
        if (kind == 10) row.Schlüssel = "Software\\Menü", row.Wertname = nullptr, row.Werteliste = "Wert";
        rows.push_back(row);
    }
    return rows;
}

class Extremes : public testing::TestWithParam<int> {};

TEST_P(Extremes, OfEveryKindComeOnScreen) {
    const auto type = static_cast<std::uint32_t>(GetParam());
    EngineFixture p(tipsOfType(GetParam()), {{}}, 1, true);
    p.store->createKey(Root::CurrentUser, "Software\\Menü\\Eintrag");
    p.port.onWindow("frmBVK_Datentyp", [](WindowRequest&) {});
    Settings settings;
    frmBVK_Prog window(p.ctx->frmBVK_Prog, settings, sortedOrder);
    EventLog log;
    window.attach(log);
    window.resize(900, 700);
    window.show();
    qint64 slowest = 0;
    const auto contents = extremes(type);
    for (std::size_t k = 0; k < contents.size(); ++k) {
        const RawValue value{type, contents[k]};
        for (const char* key : {Key, "Software\\Menü\\Eintrag"}) p.store->setValue(Root::CurrentUser, key, ValueName::named("Wert"), value);
        for (const Zeile& tip : tipsOfType(GetParam())) {
            QElapsedTimer clock;
            clock.start();
            p.engine->tree().showTipByHeading(tip.Überschrift);
            window.panelsChanged();
            window.windowChanged();
            QCoreApplication::processEvents();
            window.grab();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);   // the panels of the Tip before
            slowest = std::max(slowest, clock.elapsed());
            ASSERT_LT(clock.elapsed(), BoundMs) << "kind " << tip.Überschrift << ", content " << k;
            EXPECT_FALSE(p.windows().panels.empty()) << tip.Überschrift;
            EXPECT_EQ(log.take(), Lines{}) << "kind " << tip.Überschrift << ", content " << k;
        }
        EXPECT_EQ(p.store->value(Root::CurrentUser, Key, ValueName::named("Wert")), value) << k;
    }
    RecordProperty("slowest", static_cast<int>(slowest));
}

INSTANTIATE_TEST_SUITE_P(All, Extremes, testing::Range(0, 12));

// The ticks of the slider are drawn one by one, up to the end of its range.
TEST_F(WindowFixture, ASliderAtTheEndsOfItsNumbersIsDrawn) {
    for (const std::int32_t end : {INT32_MAX, INT32_MAX - 1, INT32_MAX - 2, INT32_MAX - 100'000'000, 100}) {
        Panel number = panelOfKind(art::ZahlenWerte);
        number.Max = end;
        number.Min = end == INT32_MAX ? INT32_MIN : 0;
        number.Value = end;
        number.TickFrequency = end / 10;
        number.numberText = std::to_string(end);
        showPanels({number});
        window.grab();
        EXPECT_EQ(control<QSlider>("sliZahlenWerte(0)").value(), end);
        QTest::keyClick(&control<QSlider>("sliZahlenWerte(0)"), Qt::Key_PageUp);
        window.grab();
    }
    EXPECT_EQ(control<QSlider>("sliZahlenWerte(0)").tickPosition(), QSlider::TicksBelow);
}

TEST_F(WindowFixture, ATextThatItsFieldWouldChangeIsReadOnly) {
    const struct {
        const char* text;
        bool lines, locked;
    } cases[] = {{"a\xC2\xA0" "b", true, false}, {"a\xE2\x80\xA8" "b", true, false}, {"a\xE2\x80\xA9" "b", true, true}, {"a\rb", true, true},
                 {"a\nb\tc", true, false},        {"a\xED\xA0\x80", true, true},         {"a\xED\xA0\x80", false, true},       {"a\nb\r\xC2\xA0", false, false}};
    for (const auto& one : cases) {
        SCOPED_TRACE(one.text);
        Panel panel = panelOfKind(art::TextWerte);
        panel.multiLine = one.lines;
        panel.text = one.text;
        showPanels({panel});
        EXPECT_EQ(one.lines ? control<QPlainTextEdit>("txtTextWerte(0)").isReadOnly() : control<QLineEdit>("txtTextWerte(0)").isReadOnly(), one.locked);
        EXPECT_TRUE(control<QLabel>("lblTextFeld").isVisible() || !one.locked);
        if (one.locked) continue;
        if (one.lines) QTest::keyClick(&control<QPlainTextEdit>("txtTextWerte(0)"), 'x');
        else QTest::keyClick(&control<QLineEdit>("txtTextWerte(0)"), 'x');
        EXPECT_EQ(log.take(), Lines{"text 0 x" + std::string(one.text)});
    }
    Panel said = panelOfKind(art::Drive);
    said.hint = "Dieser Wert darf nur gelesen werden.";
    showPanels({said});
    EXPECT_EQ(control<QLabel>("lblHinweis(0)").text(), qt(said.hint));
}

}  // namespace
}  // namespace brenvik::test
