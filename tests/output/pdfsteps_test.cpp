#include <printman/output/pdfsteps.h>

#include <QStringList>
#include <gtest/gtest.h>

#include <sstream>

using namespace printman;

namespace {

using Lines = std::vector<std::string>;

struct Case {
    const char* name;
    PdfPurpose purpose;
    WatermarkPlace watermark;
    bool has_form;
    Lines steps;
};

const PdfNames names{.ps = QStringLiteral("PS"),
                     .pdf = QStringLiteral("P"),
                     .over = QStringLiteral("O"),
                     .result = QStringLiteral("R"),
                     .watermark = QStringLiteral("W")};

Lines steps_of(const Case& c) {
    const QString form = c.has_form ? QStringLiteral("F") : QString();
    Lines lines;
    for (const PdfStep& step :
         pdf_steps(c.purpose, c.watermark, form, names, QStringLiteral("office"))) {
        std::ostringstream line;
        line << step;
        lines.push_back(line.str());
    }
    return lines;
}

/// The steps of one purpose around those that combine.
Lines around(PdfPurpose purpose, bool has_watermark, const Lines& combining) {
    Lines lines{"ps2pdf PS P"};
    lines.insert(lines.end(), combining.begin(), combining.end());
    if (purpose == PdfPurpose::print)
        lines.insert(lines.end(), {"rename R to PS", "lpr -P office PS"});
    if (purpose == PdfPurpose::serve)
        lines.push_back("move R to PS");
    else
        lines.push_back("remove PS");
    lines.insert(lines.end(), {"remove P", "remove O"});
    if (has_watermark || purpose != PdfPurpose::serve)
        lines.push_back("remove W");
    return lines;
}

std::vector<Case> all_cases() {
    std::vector<Case> cases;
    const auto add = [&cases](const char* name, PdfPurpose purpose, WatermarkPlace place, bool form,
                              const Lines& combining) {
        cases.push_back({name, purpose, place, form,
                         around(purpose, place != WatermarkPlace::none, combining)});
    };
    using enum WatermarkPlace;
    for (const auto& [purpose, alone] : {std::pair{PdfPurpose::create, "move P to R"},
                                         {PdfPurpose::print, "rename P to R"},
                                         {PdfPurpose::serve, "rename P to R"}}) {
        add("report alone", purpose, none, false, {alone});
        add("form", purpose, none, true, {"pdftk P background F output R"});
        add("behind", purpose, behind, false,
            {"make the watermark W", "pdftk P background W output R"});
        add("behind with form", purpose, behind, true,
            {"make the watermark W", "pdftk W background F output O",
             "pdftk P background O output R"});
        add("in front", purpose, in_front, false,
            {"make the watermark W", "pdftk P stamp W output R"});
        add("in front with form", purpose, in_front, true,
            {"make the watermark W", "pdftk W background O output R"});
    }
    return cases;
}

} // namespace

TEST(PdfSteps, areThoseOfTheTableForEveryCombination) {
    const std::vector<Case> cases = all_cases();
    EXPECT_EQ(cases.size(), 18u);
    for (const Case& c : cases)
        EXPECT_EQ(steps_of(c), c.steps) << c.name << ", purpose " << static_cast<int>(c.purpose);
}

TEST(PdfSteps, knowWhatTheirToolsMake) {
    const auto steps =
        pdf_steps(PdfPurpose::print, WatermarkPlace::behind, QStringLiteral("F"), names, {});
    QStringList made;
    for (const PdfStep& step : steps)
        if (step.kind == PdfStep::Kind::run)
            made << step.to;
    EXPECT_EQ(made, (QStringList{names.pdf, names.over, names.result, QString()}));
}

TEST(PdfSteps, ofAWatermarkMakeItsPdfAndRemoveThePostScript) {
    const auto steps = watermark_steps(QStringLiteral("w.ps"), QStringLiteral("w.pdf"));
    ASSERT_EQ(steps.size(), 2u);
    EXPECT_EQ(steps[0].command, "ps2pdf w.ps w.pdf");
    EXPECT_EQ(steps[0].to, QStringLiteral("w.pdf"));
    EXPECT_EQ(steps[1].kind, PdfStep::Kind::remove);
    EXPECT_EQ(steps[1].from, QStringLiteral("w.ps"));
}
