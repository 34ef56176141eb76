#include <printman/dialogs/desttexts.h>

#include <gtest/gtest.h>

using namespace printman;

namespace {

std::string saved(const char* selected, const char* filter) {
    return save_path(QString::fromUtf8(selected), QString::fromUtf8(filter)).toStdString();
}

std::string words(const char* family, int points, bool italic, int weight) {
    QFont font(QString::fromLatin1(family), points);
    font.setItalic(italic);
    return font_in_words(font, weight).toStdString();
}

} // namespace

TEST(SavePath, hasTheExtensionOfTheFilter) {
    EXPECT_EQ(saved("/home/a.txt", "PDF (*.pdf)"), "/home/a.pdf");
    EXPECT_EQ(saved("/home/a", "Text (*.txt)"), "/home/a.txt");
    EXPECT_EQ(saved("/home/a.txt", "Text (*.txt)"), "/home/a.txt");
    EXPECT_EQ(saved("/home/a.pdf", "Both (*.pdf *.txt)"), "/home/a.txt");
    EXPECT_EQ(saved("/home/a", "Other"), "/home/a.Other");
    EXPECT_EQ(saved("/home/a", "Loud (*.TXT)"), "/home/a.Loud (*.TXT)");
}

TEST(SavePath, takesTheNameUpToItsFirstDot) {
    EXPECT_EQ(saved("/home/report.old.txt", "PDF (*.pdf)"), "/home/report.pdf");
    EXPECT_EQ(saved("/home/v1.2/report", "PDF (*.pdf)"), "/home/v1.2/report.pdf");
    EXPECT_EQ(saved("/home/.hidden", "PDF (*.pdf)"), "/home/.pdf");
}

TEST(SavePath, keepsPercentSignsAndAccents) {
    EXPECT_EQ(saved("/home/%2/50%3.x", "PDF (*.pdf)"), "/home/%2/50%3.pdf");
    EXPECT_EQ(saved("/tmp/\xC3\xA9t\xC3\xA9", "Text (*.txt)"), "/tmp/\xC3\xA9t\xC3\xA9.txt");
}

TEST(FontInWords, tellsFamilyWeightSlantAndSize) {
    EXPECT_EQ(words("Courier", 10, false, 75), "Courier, Bold regular, size 10");
    EXPECT_EQ(words("Courier", 24, true, 50), "Courier, Normal italic, size 24");
    EXPECT_EQ(words("100%2 %1", 8, false, 50), "100%2 %1, Normal regular, size 8");
}

TEST(FontInWords, hasAWordForFiveWeightsAndTheNormalOneForAllOthers) {
    EXPECT_EQ(words("A", 9, false, 25), "A, Light regular, size 9");
    EXPECT_EQ(words("A", 9, false, 63), "A, DemiBold regular, size 9");
    EXPECT_EQ(words("A", 9, false, 87), "A, Black regular, size 9");
    for (const int weight : {0, 12, 24, 26, 30, 40, 49, 50, 51, 57, 74, 76, 81, 99})
        EXPECT_EQ(words("A", 9, false, weight), "A, Normal regular, size 9") << weight;
}

TEST(FittingFileName, isCutBetweenCharacters) {
    const QString name = QString::fromUtf8("ab\xC3\xA9\xE2\x82\xAC");
    EXPECT_EQ(fitting_file_name(name, 7), "ab\xC3\xA9\xE2\x82\xAC");
    EXPECT_EQ(fitting_file_name(name, 6), "ab\xC3\xA9");
    EXPECT_EQ(fitting_file_name(name, 4), "ab\xC3\xA9");
    EXPECT_EQ(fitting_file_name(name, 3), "ab");
    EXPECT_EQ(fitting_file_name(name, 0), "");
    EXPECT_EQ(fitting_file_name({}, 5), "");
}
