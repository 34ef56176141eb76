#include "examples/reportpage.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

using namespace examples;

namespace {

constexpr int columns = 132;
constexpr int lines = 66;
constexpr int foot_lines = 3;
constexpr int amount_column = 59;
constexpr int amount_step = 12;
constexpr int amount_width = 11;
constexpr std::array buckets{"Current", "1-30", "31-60", "61-90", "Over 90", "Total"};
constexpr size_t total_bucket = buckets.size() - 1;

using Amounts = std::array<long, buckets.size()>;

struct Customer {
    const char* number;
    const char* name;
    const char* contact;
    long limit; ///< in whole dollars
    int invoices;
};

constexpr std::array customers{
    Customer{"100214", "Hartwell Supply Company", "M. Hartwell  555-0134", 25000, 5},
    Customer{"100236", "Bluewater Marine Fittings", "T. Okafor  555-0177", 40000, 7},
    Customer{"100251", "Cobb & Daughters Hardware", "R. Cobb  555-0102", 12000, 3},
    Customer{"100319", "Dunmore Dairy Cooperative", "Accounts  555-0150", 60000, 6},
    Customer{"100342", "Eastgate Printing Works", "L. Moreno  555-0119", 15000, 4},
    Customer{"100377", "Ferris Orchard Equipment", "J. Ferris  555-0128", 30000, 5},
    Customer{"100408", "Granite Falls Lumber", "P. Anand  555-0181", 75000, 8},
    Customer{"100433", "Harbor Street Electric", "S. Novak  555-0143", 20000, 4},
    Customer{"100467", "Ironbridge Tool & Die", "W. Kessler  555-0166", 50000, 6},
    Customer{"100490", "Juniper Hill Nursery", "A. Whitfield  555-0109", 8000, 3},
    Customer{"100515", "Kingsley Office Outfitters", "D. Park  555-0171", 18000, 5},
    Customer{"100548", "Lakeshore Cold Storage", "H. Brandt  555-0124", 45000, 6},
    Customer{"100572", "Maple & Third Bakery Supply", "E. Rossi  555-0138", 10000, 4},
    Customer{"100606", "Northfield Grain Elevator", "Accounts  555-0195", 90000, 7},
    Customer{"100631", "Oakhurst Paint and Glass", "C. Bell  555-0112", 14000, 3},
    Customer{"100659", "Pioneer Valley Freight", "G. Stanton  555-0187", 55000, 6},
    Customer{"100684", "Quarry Road Concrete", "N. Haddad  555-0147", 65000, 5},
    Customer{"100712", "Riverside School District", "Purchasing  555-0106", 35000, 4},
    Customer{"100738", "Silver Creek Plumbing", "B. Tanaka  555-0159", 22000, 5},
    Customer{"100765", "Tillman Brothers Roofing", "F. Tillman  555-0133", 28000, 6},
    Customer{"100791", "Union Square Apothecary", "K. Lindqvist  555-0121", 9000, 3},
    Customer{"100820", "Valley View Veterinary", "O. Mensah  555-0174", 11000, 4},
    Customer{"100846", "Westbrook Textile Mill", "I. Castellano  555-0190", 80000, 7},
    Customer{"100859", "Wharfside Fish Market", "Q. Nguyen  555-0162", 16000, 5},
    Customer{"100873", "Yarrow Lane Furniture", "V. Dubois  555-0116", 24000, 5},
    Customer{"100894", "Young & Abernathy Survey", "B. Young  555-0129", 13000, 4},
    Customer{"100917", "Zenith Window Cleaning", "L. Zapata  555-0155", 7000, 3},
};

struct Invoice {
    long number = 0;
    int days = 0; ///< past due; 0 or less: not yet due
    long cents = 0;
};

/// The same numbers on every machine.
class Numbers {
public:
    long below(long limit) {
        state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<long>((state_ >> 33U) % static_cast<uint64_t>(limit));
    }

private:
    uint64_t state_ = 20240531;
};

/// The open invoices of the customer at @p place, oldest first; their numbers grow with their
/// dates.
std::vector<Invoice> invoices_of(const Customer& customer, int place, Numbers& numbers) {
    std::vector<Invoice> list;
    while (static_cast<int>(list.size()) < customer.invoices) {
        const long cents = 4500 + numbers.below(customer.limit * 22);
        const bool credit = numbers.below(14) == 0;
        const long days = numbers.below(5) < 2 ? -numbers.below(30) : numbers.below(128);
        const long number = 52000 - (days + 30) * 24 + place;
        if (std::ranges::find(list, number, &Invoice::number) == list.end())
            list.push_back({number, static_cast<int>(days), credit ? -cents / 4 : cents});
    }
    std::ranges::sort(list, {}, &Invoice::number);
    return list;
}

size_t bucket_of(int days) {
    if (days <= 0)
        return 0;
    return days > 90 ? 4 : static_cast<size_t>((days - 1) / 30 + 1);
}

/// The date that lies @p days days before May 31, 2024, and thirty days of grace before that.
std::string invoice_date(int days) {
    static constexpr std::array month_days{31, 29, 31, 30, 31};
    int back = days + 30;
    int month = 5;
    int day = 31;
    int year = 2024;
    while (back >= day) {
        back -= day;
        month = month == 1 ? 12 : month - 1;
        year = month == 12 ? year - 1 : year;
        day = month == 12 ? 31 : month_days[static_cast<size_t>(month - 1)];
    }
    const auto two = [](int n) { return (n < 10 ? "0" : "") + std::to_string(n); };
    return two(month) + '/' + two(day - back) + '/' + std::to_string(year);
}

void put_amounts(Line& line, const Amounts& amounts, bool zeroes) {
    for (size_t i = 0; i < amounts.size(); ++i) {
        if (zeroes || amounts[i] != 0)
            line.right(amount_column + static_cast<int>(i) * amount_step, amount_width,
                       money(amounts[i]));
    }
}

void put_rules(Line& line, char c) {
    for (size_t i = 0; i < buckets.size(); ++i)
        line.rule(amount_column + static_cast<int>(i) * amount_step, amount_width, c);
}

Line rules_of(char c) {
    Line line;
    put_rules(line, c);
    return line;
}

class Aging {
public:
    explicit Aging(int pages) : pages_(pages) {}

    /// Writes the report, and says how many pages it has.
    int print();

    bool ok() const { return report_.ok(); }

private:
    void begin_page();
    void print_customer(const Customer& customer, const std::vector<Invoice>& invoices);
    void print_totals();

    Report report_{columns, lines};
    int pages_;
    int page_ = 0;
    Amounts grand_{};
    long invoice_count_ = 0;
};

void Aging::begin_page() {
    report_.begin_page();
    ++page_;
    report_.add(
        Line()
            .text(1, "Run 05/31/2024 18:05")
            .centre(41, 50, "Meridian Industrial Distributors, Inc.")
            .right(112, 18, "Page " + std::to_string(page_) + " of " + std::to_string(pages_)));
    report_.add(Line().text(1, "AR410").centre(41, 50, "ACCOUNTS RECEIVABLE AGING"));
    report_.add(Line().centre(41, 50, "As of May 31, 2024"));
    report_.blank();
    Line heads;
    heads.text(1, "Number").left(8, 26, "Customer").right(35, 7, "Invoice").centre(43, 10, "Date");
    heads.right(54, 4, "Days");
    for (size_t i = 0; i < buckets.size(); ++i)
        heads.right(amount_column + static_cast<int>(i) * amount_step, amount_width, buckets[i]);
    report_.add(heads);
    Line rules;
    rules.rule(1, 6).rule(8, 26).rule(35, 7).rule(43, 10).rule(54, 4);
    put_rules(rules, '-');
    report_.add(rules);
}

void Aging::print_customer(const Customer& customer, const std::vector<Invoice>& invoices) {
    const int needed = static_cast<int>(invoices.size()) + 4;
    if (page_ == 0 || report_.room() < needed + foot_lines)
        begin_page();
    report_.add(Line()
                    .left(1, 6, customer.number)
                    .left(8, 26, customer.name)
                    .tab(34, amount_column)
                    .text(amount_column, std::string(customer.contact) + "   Credit limit " +
                                             with_commas(customer.limit)));
    Amounts sum{};
    for (const Invoice& invoice : invoices) {
        Amounts row{};
        row[bucket_of(invoice.days)] = invoice.cents;
        row[total_bucket] = invoice.cents;
        Line line;
        line.right(35, 7, std::to_string(invoice.number));
        line.centre(43, 10, invoice_date(invoice.days));
        if (invoice.days > 0)
            line.right(54, 4, std::to_string(invoice.days));
        put_amounts(line, row, false);
        report_.add(line);
        for (size_t i = 0; i < row.size(); ++i)
            sum[i] += row[i];
    }
    report_.add(rules_of('-'));
    Line total;
    total.text(8, "Customer total");
    put_amounts(total, sum, true);
    report_.add(total);
    report_.blank();
    for (size_t i = 0; i < sum.size(); ++i)
        grand_[i] += sum[i];
    invoice_count_ += static_cast<long>(invoices.size());
}

void Aging::print_totals() {
    if (report_.room() < 8)
        begin_page();
    report_.add(rules_of('='));
    Line total;
    total.text(8, "GRAND TOTAL");
    put_amounts(total, grand_, true);
    report_.add(total);
    Line percent;
    percent.text(8, "Percent of total");
    for (size_t i = 0; i < grand_.size(); ++i) {
        const long tenths = (grand_[i] * 1000 + grand_[total_bucket] / 2) / grand_[total_bucket];
        percent.right(amount_column + static_cast<int>(i) * amount_step, amount_width,
                      std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + '%');
    }
    report_.add(percent);
    report_.add(rules_of('='));
    report_.blank();
    report_.add(Line().text(8, std::to_string(customers.size()) + " customers, " +
                                   std::to_string(invoice_count_) + " open invoices"));
    report_.add(Line().centre(41, 50, "*** END OF REPORT ***"));
}

int Aging::print() {
    Numbers numbers;
    int place = 0;
    for (const Customer& customer : customers)
        print_customer(customer, invoices_of(customer, place++, numbers));
    print_totals();
    report_.end();
    return page_;
}

} // namespace

int main() {
    constexpr int pages = 5;
    Aging aging(pages);
    return aging.print() == pages && aging.ok() ? 0 : 1;
}
