#include "examples/reportpage.h"

#include <array>

using namespace examples;

namespace {

constexpr int columns = 80;
constexpr int lines = 24;
constexpr int rows_a_page = 16;

struct Item {
    const char* number;
    const char* name;
    const char* bin;
    int on_hand;
    int reorder_at;
    int order;
    long cost; ///< in cents
};

constexpr std::array items{
    Item{"A-1004", "Hex bolt 1/4 x 1 zinc, box of 100", "A01", 12, 40, 60, 895},
    Item{"A-1010", "Hex bolt 3/8 x 2 zinc, box of 50", "A01", 6, 25, 40, 1240},
    Item{"A-1122", "Carriage bolt 5/16 x 3, box of 50", "A02", 3, 20, 30, 1475},
    Item{"A-1208", "Flat washer 1/4, box of 200", "A03", 18, 30, 30, 420},
    Item{"A-1215", "Lock washer 3/8, box of 200", "A03", 9, 30, 45, 465},
    Item{"A-1330", "Wing nut 1/4, box of 100", "A04", 0, 15, 25, 780},
    Item{"B-2001", "Deck screw #8 x 2-1/2, 5 lb", "B01", 21, 60, 80, 2295},
    Item{"B-2004", "Deck screw #10 x 3, 5 lb", "B01", 14, 60, 80, 2495},
    Item{"B-2051", "Drywall screw 1-5/8, 5 lb", "B02", 30, 75, 90, 1695},
    Item{"B-2109", "Sheet metal screw #8 x 3/4", "B03", 11, 25, 25, 615},
    Item{"C-3012", "Masking tape 1-1/2 in", "C01", 44, 96, 144, 389},
    Item{"C-3020", "Duct tape 2 in x 60 yd", "C01", 25, 48, 72, 749},
    Item{"C-3047", "Pipe thread tape 1/2 in", "C02", 60, 120, 120, 99},
    Item{"C-3101", "Wood glue 16 oz", "C04", 7, 24, 36, 619},
    Item{"C-3118", "Epoxy, two part, 1 oz", "C04", 2, 18, 24, 545},
    Item{"D-4003", "Sandpaper 80 grit, pack of 25", "D01", 8, 20, 30, 1189},
    Item{"D-4006", "Sandpaper 150 grit, pack of 25", "D01", 5, 20, 30, 1189},
    Item{"D-4030", "Steel wool 0000, 8 pads", "D02", 16, 24, 24, 459},
    Item{"D-4077", "Paint brush 2 in, angled", "D05", 19, 36, 48, 825},
    Item{"D-4079", "Paint brush 3 in, flat", "D05", 10, 36, 48, 1045},
    Item{"D-4102", "Roller cover 9 in, 3/8 nap", "D06", 33, 72, 96, 349},
    Item{"E-5011", "Outlet, duplex, 15 A, white", "E01", 41, 100, 150, 129},
    Item{"E-5014", "Outlet, protected, 20 A, white", "E01", 6, 20, 30, 1875},
    Item{"E-5040", "Wall switch, single pole", "E02", 37, 80, 100, 159},
    Item{"E-5082", "Wire connector, red, 100", "E03", 4, 15, 20, 1090},
    Item{"E-5127", "Extension cord 25 ft, 16/3", "E05", 8, 12, 18, 1399},
    Item{"F-6002", "Garden hose 50 ft", "F01", 5, 15, 20, 2849},
    Item{"F-6016", "Hose coupling, brass, 3/4", "F02", 13, 30, 40, 575},
    Item{"F-6033", "Work gloves, leather, L", "F04", 22, 40, 60, 1299},
    Item{"F-6035", "Work gloves, leather, XL", "F04", 9, 40, 60, 1299},
    Item{"F-6104", "Tarpaulin 8 x 10 ft", "F06", 3, 10, 12, 1149},
    Item{"G-7009", "Padlock, laminated, 1-1/2 in", "G01", 12, 24, 24, 899},
    Item{"G-7021", "Door hinge 3-1/2 in, satin", "G02", 28, 60, 60, 329},
    Item{"G-7055", "Cabinet knob, brushed nickel", "G03", 17, 50, 100, 275},
};

constexpr int pages = (static_cast<int>(items.size()) + rows_a_page - 1) / rows_a_page;

void begin_page(Report& report, int page) {
    report.begin_page();
    report.add(Line()
                   .text(1, "Corner Hardware, Store 12")
                   .centre(28, 26, "REORDER LIST")
                   .right(62, 18, "Page " + std::to_string(page) + " of " + std::to_string(pages)));
    report.add(Line().text(1, "Items at or below their reorder point").right(62, 18, "06/03/2024"));
    report.blank();
    report.add(Line()
                   .left(1, 7, "Item")
                   .left(9, 33, "Description")
                   .centre(43, 5, "Bin")
                   .right(49, 5, "Hand")
                   .right(55, 5, "Point")
                   .right(61, 5, "Order")
                   .right(67, 13, "Cost"));
    report.add(
        Line().rule(1, 7).rule(9, 33).rule(43, 5).rule(49, 5).rule(55, 5).rule(61, 5).rule(67, 13));
}

} // namespace

int main() {
    Report report(columns, lines);
    long total = 0;
    for (size_t i = 0; i < items.size(); ++i) {
        const Item& item = items[i];
        if (i % rows_a_page == 0)
            begin_page(report, static_cast<int>(i) / rows_a_page + 1);
        const long cost = item.cost * item.order;
        total += cost;
        report.add(Line()
                       .left(1, 7, item.number)
                       .left(9, 33, item.name)
                       .centre(43, 5, item.bin)
                       .right(49, 5, std::to_string(item.on_hand))
                       .right(55, 5, std::to_string(item.reorder_at))
                       .right(61, 5, std::to_string(item.order))
                       .right(67, 13, money(cost)));
    }
    report.add(Line().rule(67, 13, '='));
    report.add(Line()
                   .text(9, std::to_string(items.size()) + " items to order")
                   .right(67, 13, money(total)));
    report.end();
    return report.ok() ? 0 : 1;
}
