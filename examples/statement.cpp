#include "examples/reportpage.h"

#include <algorithm>
#include <array>
#include <vector>

using namespace examples;

namespace {

constexpr int columns = 80;
constexpr int lines = 66;

struct Entry {
    const char* date;
    const char* number;
    const char* text;
    long cents; ///< an invoice; a payment is negative
};

struct Account {
    std::array<const char*, 4> address;
    const char* number;
    long carried;
    std::vector<Entry> entries;
    const char* remark;
};

const std::vector<Account>& accounts() {
    static const std::vector<Account> list{
        {{"Hôtel Überfahrt GmbH", "Frau Zoë Grünwald-Lefèvre", "Straße am Mühlbach 7½",
          "79098 Freiburg im Breisgau"},
         "D-20417",
         125480,
         {{"03.05.2024", "RE 24-1187", "12 Fl. Gewürztraminer Spätlese", 17880},
          {"06.05.2024", "ZE 8841", "Überweisung, vielen Dank", -125480},
          {"11.05.2024", "RE 24-1203", "24 Fl. Grüner Veltliner, Große Lage", 40560},
          {"17.05.2024", "GU 24-0092", "Gutschrift: 2 Flaschen mit Korkgeschmack", -3380},
          {"24.05.2024", "RE 24-1251", "6 Mag. Blaufränkisch, Füllung für Gäste", 29940},
          {"28.05.2024", "RE 24-1266", "Käseplatte à 4 kg, gekühlt geliefert", 13250}},
         "Bitte überweisen Sie den fälligen Betrag bis zum 15. Juni."},
        {{"Café de l'Île Saint-Étienne", "M. François Bézier", "3, allée des Chênes",
          "67000 Strasbourg"},
         "F-30092",
         0,
         {{"02.05.2024", "RE 24-1180", "36 bt. Crémant brut, « Cuvée Noël »", 53640},
          {"08.05.2024", "RE 24-1195", "Pâté en croûte, jambon fumé, 5 kg", 21475},
          {"15.05.2024", "ZE 8874", "Règlement reçu à échéance", -53640},
          {"21.05.2024", "RE 24-1240", "18 bt. Côtes rôties, élevé en fût de chêne", 48330},
          {"30.05.2024", "RE 24-1272", "Dégustation et service des garçons", 15000}},
         "Merci de régler le solde à réception. Les prix s'entendent TVA 20 % incluse."},
        {{"Ærø Skipperkro ApS", "Søren Bjørnsson", "Havnegade 41, Ø-siden", "5970 Ærøskøbing"},
         "DK-40005",
         -15000,
         {{"04.05.2024", "RE 24-1190", "48 fl. Müller-Thurgau, tør, 0,75 l", 57120},
          {"13.05.2024", "RE 24-1211", "Røget ål, 4½ kg, kølet til 2 °C", 4890},
          {"19.05.2024", "ZE 8890", "Indbetaling, £ 360.00 à 1,17", -42120},
          {"27.05.2024", "RE 24-1260", "Smørrebrød, 10 stk. à 9,95", 9950}},
         "Tak for Deres ordre. Varerne forbliver vor ejendom indtil betaling (§ 53)."},
    };
    return list;
}

/// "1.234,50", with a minus behind a negative amount.
std::string amount(long cents) {
    std::string text = money(cents);
    for (char& c : text) {
        if (c == ',')
            c = '.';
        else if (c == '.')
            c = ',';
    }
    return text;
}

void print_head(Report& report, const Account& account, int page) {
    report.begin_page();
    report.add(Line().centre(1, 79, latin1("WEINGUT SCHÖNBÜHL & SÖHNE")));
    report.add(
        Line().centre(1, 79, latin1("Négociants en vins · Kellergäßchen 2 · 79235 Vogtsburg")));
    report.add(Line().rule(1, 79, '='));
    report.blank(2);
    for (const char* line : account.address)
        report.add(Line().left(3, 40, latin1(line)));
    report.blank(2);
    report.add(Line()
                   .text(3, latin1("KONTOAUSZUG / RELEVÉ DE COMPTE"))
                   .right(55, 24, latin1("Vogtsburg, 31. Mai 2024")));
    report.add(Line()
                   .text(3, "Konto")
                   .tab(9, 12)
                   .text(12, account.number)
                   .right(55, 24, "Blatt " + std::to_string(page)));
    report.blank();
    report.add(Line()
                   .centre(1, 10, "Datum")
                   .left(12, 10, "Beleg")
                   .left(23, 31, latin1("Text / Libellé"))
                   .right(55, 11, "Betrag EUR")
                   .right(67, 12, "Saldo EUR"));
    report.add(Line().rule(1, 10).rule(12, 10).rule(23, 31).rule(55, 11).rule(67, 12));
}

/// Cuts a text at a blank so that both parts fit @p width; the second is empty when it fits whole.
std::pair<std::string, std::string> wrap(const std::string& text, size_t width) {
    if (text.size() <= width)
        return {text, {}};
    const size_t blank = text.rfind(' ', width);
    return {text.substr(0, blank), text.substr(blank + 1)};
}

void print_account(Report& report, const Account& account, int page) {
    print_head(report, account, page);
    long balance = account.carried;
    report.add(Line()
                   .centre(1, 10, "01.05.2024")
                   .left(23, 31, latin1("Übertrag / Report à nouveau"))
                   .right(67, 12, amount(balance)));
    long invoiced = 0;
    long paid = 0;
    for (const Entry& entry : account.entries) {
        balance += entry.cents;
        (entry.cents > 0 ? invoiced : paid) += entry.cents;
        const auto [first, rest] = wrap(latin1(entry.text), 31);
        report.add(Line()
                       .centre(1, 10, entry.date)
                       .left(12, 10, entry.number)
                       .left(23, 31, first)
                       .right(55, 11, amount(entry.cents))
                       .right(67, 12, amount(balance)));
        if (!rest.empty())
            report.add(Line().left(25, 29, rest));
    }
    report.add(Line().rule(55, 11).rule(67, 12));
    report.add(Line().left(23, 31, latin1("Belastungen / Débits")).right(55, 11, amount(invoiced)));
    report.add(Line().left(23, 31, latin1("Zahlungen / Crédits")).right(55, 11, amount(paid)));
    report.add(
        Line().left(23, 31, latin1("FÄLLIGER BETRAG / SOLDE DÛ")).right(67, 12, amount(balance)));
    report.add(Line().rule(67, 12, '='));
    report.blank(2);
    report.add(Line().text(3, latin1(account.remark)));
    report.blank(std::max(0, report.room() - 3));
    report.add(Line().rule(1, 79));
    report.add(
        Line().centre(1, 79, latin1("Geschäftsführer: Jürgen Schönbühl · Bürozeiten 8-17 Uhr")));
    report.end();
}

} // namespace

int main() {
    Report report(columns, lines);
    int page = 0;
    for (const Account& account : accounts())
        print_account(report, account, ++page);
    return report.ok() ? 0 : 1;
}
