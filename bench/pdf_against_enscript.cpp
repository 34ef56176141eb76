// A report to a searchable PDF: `printman pdf` against enscript and ps2pdf on the same text.
//
// usage: pdf_against_enscript [ROUNDS [PAGES]]
#include "bench/measure.h"
#include "bench/yardstick.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace {

using bench::Run;

/// The peer's page: A4 landscape, Latin-1 (its usual encoding), no header, in a size that 66 lines
/// of 132 columns fit. The form feed that ends a page stands on a line of its own, the 67th.
const std::vector<std::string> enscript = {"enscript",       "--quiet",    "--no-header",
                                           "--landscape",    "--media=A4", "--lines-per-page=67",
                                           "--font=Courier7"};

std::vector<std::string> with(std::vector<std::string> command,
                              std::initializer_list<std::string> more) {
    command.insert(command.end(), more);
    return command;
}

std::string shell_text(const std::vector<std::string>& command) {
    std::string text;
    for (const std::string& argument : command)
        text += "'" + argument + "' ";
    return text;
}

struct Paper {
    int pages = 0;
    int words = 0;
    long bytes = 0;
    std::string fonts;
};

Paper look_into(const std::string& pdf) {
    Paper paper;
    std::istringstream information(bench::output_of({"pdfinfo", pdf}));
    std::string line;
    while (std::getline(information, line)) {
        if (line.starts_with("Pages:"))
            paper.pages = static_cast<int>(std::strtol(line.c_str() + 6, nullptr, 10));
    }
    std::istringstream text(bench::output_of({"pdftotext", "-layout", pdf, "-"}));
    for (std::string word; text >> word;)
        ++paper.words;
    paper.fonts = bench::output_of({"pdffonts", pdf});
    paper.bytes = bench::size_of_file(pdf);
    return paper;
}

int words_in(const std::string& file) {
    std::ifstream text(file);
    int words = 0;
    for (std::string word; text >> word;)
        ++words;
    return words;
}

/// A ps2pdf that does nothing but look at the PostScript's size, so that the rest of `printman pdf`
/// stands alone.
void write_idle_ps2pdf(const std::string& path, const std::string& size_file) {
    std::ofstream script(path);
    script << "#!/bin/sh\n"
              "wc -c <\"$1\" >'"
           << size_file
           << "'\n"
              "printf '%%PDF-1.4\\n%%%%EOF\\n' >\"$2\"\n";
    script.close();
    bench::run({"chmod", "+x", path});
}

/// What the peer takes, as a pipe and one step after the other.
struct Peer {
    double pipe = 0;
    double steps = 0;
};

void print_row(const char* name, const Run& run, const Peer& peer) {
    std::printf("  %-26s %7.3f s %7.2f x %7.2f x %10.3f s %9.1f MiB\n", name, run.seconds,
                run.seconds / peer.pipe, run.seconds / peer.steps, run.cpu_seconds, run.peak_mib);
}

void measure(int argc, char** argv) {
    const int rounds = bench::number_argument(argc, argv, 1, 7);
    const int pages = bench::number_argument(argc, argv, 2, 1000);

    const bench::Scratch scratch;
    const std::string report = scratch.file("yardstick.rpt");
    const std::string listing = scratch.file("yardstick.txt");
    const std::string ours = scratch.file("ours.pdf");
    const std::string peers = scratch.file("peers.pdf");
    const std::string peers_ps = scratch.file("peers.ps");
    const std::string ps_size = scratch.file("size");
    if (!bench::write_yardstick(pages, report, listing))
        bench::fail("cannot write the report");
    write_idle_ps2pdf(scratch.file("ps2pdf"), ps_size);

    const std::vector<std::string> printman = {PRINTMAN_PROGRAM, "pdf", report};
    const std::vector<std::string> alone =
        with({"env", "PATH=" + scratch.path() + ":/usr/bin:/bin"},
             {PRINTMAN_PROGRAM, "pdf", report, scratch.file("idle.pdf")});
    const std::vector<std::string> pipe = {"bash", "-c",
                                           "set -o pipefail; " +
                                               shell_text(with(enscript, {"--output=-", listing})) +
                                               " | ps2pdf - '" + peers + "'"};

    std::vector<Run> our_runs;
    std::vector<Run> alone_runs;
    std::vector<Run> pipe_runs;
    std::vector<Run> enscript_runs;
    std::vector<Run> ps2pdf_runs;
    std::vector<Run> step_runs;
    for (int round = 0; round <= rounds; ++round) {
        const Run our = bench::run(with(printman, {ours}));
        const Run peer = bench::run(pipe);
        const Run lone = bench::run(alone);
        const Run first = bench::run(with(enscript, {"--output=" + peers_ps, listing}));
        const Run second = bench::run({"ps2pdf", peers_ps, peers});
        if (round == 0) // to warm up
            continue;
        our_runs.push_back(our);
        pipe_runs.push_back(peer);
        alone_runs.push_back(lone);
        enscript_runs.push_back(first);
        ps2pdf_runs.push_back(second);
        step_runs.push_back({.seconds = first.seconds + second.seconds,
                             .cpu_seconds = first.cpu_seconds + second.cpu_seconds,
                             .peak_mib = std::max(first.peak_mib, second.peak_mib)});
    }

    const Peer peer_times = {.pipe = bench::median(pipe_runs).seconds,
                             .steps = bench::median(step_runs).seconds};
    std::printf("%d pages to PDF, medians of %d rounds\n", pages, rounds);
    std::printf("  %-26s %9s %9s %9s %12s %13s\n", "", "time", "of pipe", "of steps", "CPU",
                "memory");
    print_row("printman pdf", bench::median(our_runs), peer_times);
    print_row("  without its ps2pdf", bench::median(alone_runs), peer_times);
    print_row("pipe: enscript | ps2pdf", bench::median(pipe_runs), peer_times);
    print_row("steps: enscript; ps2pdf", bench::median(step_runs), peer_times);
    print_row("  enscript", bench::median(enscript_runs), peer_times);
    print_row("  ps2pdf", bench::median(ps2pdf_runs), peer_times);

    long ps_bytes = 0;
    std::ifstream(ps_size) >> ps_bytes;
    const Paper our = look_into(ours);
    const Paper peer = look_into(peers);
    const int words = words_in(listing);
    std::printf("PostScript: %ld and %ld bytes, %.2f x\n", ps_bytes, bench::size_of_file(peers_ps),
                static_cast<double>(ps_bytes) / static_cast<double>(bench::size_of_file(peers_ps)));
    std::printf("PDF: %ld and %ld bytes, %.2f x; %d and %d pages; %d and %d of %d words\n",
                our.bytes, peer.bytes,
                static_cast<double>(our.bytes) / static_cast<double>(peer.bytes), our.pages,
                peer.pages, our.words, peer.words, words);
    std::printf("fonts of printman's PDF:\n%sfonts of the other:\n%s", our.fonts.c_str(),
                peer.fonts.c_str());
    if (our.pages != pages || peer.pages != pages)
        bench::fail("the PDFs have not the same pages: nothing was compared");
    if (our.words != words || peer.words != words)
        bench::fail("a PDF lacks words of the report: nothing was compared");
}

} // namespace

int main(int argc, char** argv) {
    return bench::run_measurement(argc, argv, measure);
}
