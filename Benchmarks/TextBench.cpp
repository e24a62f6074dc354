// Walking through a large text word by word and token by token, appending to a text a million times, and the checksum.
// The text is made like the lines of a result file, and holds 100 MB of wide characters.

#include "LibCore/rvfMath.h"
#include "LibUnstructGrid/VTOString.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace {

constexpr size_t TEXT_LENGTH = 100000000 / sizeof(wchar_t);
constexpr int APPENDS = 1000000;
constexpr size_t CRC_BYTES = 64 << 20;

std::wstring makeText(wchar_t separator) {
    std::wstring text;
    text.reserve(TEXT_LENGTH + 100);
    unsigned int state = 1;
    while (text.size() < TEXT_LENGTH) {
        state = state * 1664525u + 1013904223u;
        wchar_t number[40];
        std::swprintf(number, 40, L"%u%lc%.5E%lc", state >> 16, static_cast<wint_t>(separator),
                      static_cast<double>(state), static_cast<wint_t>(separator));
        text += number;
    }
    return text;
}

const std::wstring& wordText() {
    static const std::wstring text = makeText(L' ');
    return text;
}

const std::wstring& tokenText() {
    static const std::wstring text = makeText(L',');
    return text;
}

void wordsOurs(benchmark::State& state) {
    VTString sText(wordText().c_str());
    for (auto _ : state) {
        long long count = 0;
        bool bMore = !sText.GetFirstWord().IsEmpty();
        while (bMore) {
            ++count;
            bMore = !sText.GetNextWord().IsEmpty();
        }
        state.counters["count"] = static_cast<double>(count);
    }
}

void wordsRival(benchmark::State& state) {
    const std::wstring& text = wordText();
    for (auto _ : state) {
        long long count = 0;
        size_t begin = text.find_first_not_of(L" \t");
        while (begin != std::wstring::npos) {
            const size_t end = std::min(text.find_first_of(L" \t,", begin), text.size());
            std::wstring word = text.substr(begin, end - begin);
            word.erase(word.find_last_not_of(L"\r\n") + 1);
            if (word.empty()) {
                break;
            }
            ++count;
            begin = text.find_first_not_of(L" \t", end);
        }
        state.counters["count"] = static_cast<double>(count);
    }
}

void tokensOurs(benchmark::State& state) {
    VTString sText(tokenText().c_str());
    for (auto _ : state) {
        long long count = 0;
        bool bMore = true;
        benchmark::DoNotOptimize(sText.GetFirstToken(L',', &bMore));
        while (bMore) {
            ++count;
            const VTString sToken = sText.GetNextToken(L',', &bMore);
        }
        state.counters["count"] = static_cast<double>(count);
    }
}

void tokensRival(benchmark::State& state) {
    const std::wstring& text = tokenText();
    for (auto _ : state) {
        long long count = 0;
        size_t begin = 0;
        size_t end = text.find(L',');
        while (end != std::wstring::npos) {
            std::wstring token = text.substr(begin, end - begin);
            benchmark::DoNotOptimize(token.data());
            ++count;
            begin = end + 1;
            end = text.find(L',', begin);
        }
        state.counters["count"] = static_cast<double>(count);
    }
}

void appendsOurs(benchmark::State& state, int appends) {
    const VTString sPiece(L"-1.2345");
    for (auto _ : state) {
        VTString sText;
        for (int i = 0; i < appends; ++i) {
            sText += sPiece;
        }
        benchmark::DoNotOptimize(~sText);
    }
}

void appendsReserved(benchmark::State& state) {
    const VTString sPiece(L"-1.2345");
    for (auto _ : state) {
        VTString sText;
        sText.SetBufferLength(APPENDS * sPiece.Length() + 1);
        for (int i = 0; i < APPENDS; ++i) {
            sText += sPiece;
        }
        benchmark::DoNotOptimize(~sText);
    }
}

void appendsRival(benchmark::State& state) {
    const std::wstring piece(L"-1.2345");
    for (auto _ : state) {
        std::wstring text;
        text.reserve(APPENDS * piece.size());
        for (int i = 0; i < APPENDS; ++i) {
            text += piece;
        }
        benchmark::DoNotOptimize(text.data());
    }
}

std::vector<unsigned char> makeBytes() {
    std::vector<unsigned char> bytes(CRC_BYTES);
    unsigned int state = 1;
    for (unsigned char& byte : bytes) {
        state = state * 1664525u + 1013904223u;
        byte = static_cast<unsigned char>(state >> 24);
    }
    return bytes;
}

void crcOurs(benchmark::State& state) {
    const std::vector<unsigned char> bytes = makeBytes();
    for (auto _ : state) {
        benchmark::DoNotOptimize(rvf::Math::crc(bytes.data(), bytes.size()));
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes.size()));
}

// One table, one byte at a time.
void crcRival(benchmark::State& state) {
    const std::vector<unsigned char> bytes = makeBytes();
    std::vector<unsigned int> table(256);
    for (unsigned int byte = 0; byte < 256; ++byte) {
        table[byte] = byte;
        for (int bit = 0; bit < 8; ++bit) {
            table[byte] = (table[byte] >> 1) ^ ((table[byte] & 1) != 0 ? 0xEDB88320u : 0u);
        }
    }
    for (auto _ : state) {
        unsigned int remainder = 0xFFFFFFFF;
        for (unsigned char byte : bytes) {
            remainder = (remainder >> 8) ^ table[(remainder ^ byte) & 0xFF];
        }
        benchmark::DoNotOptimize(remainder);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes.size()));
}

/// Keeps the fastest of the repetitions, in nanoseconds: other work on the machine has disturbed it least.
class FastestReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration) {
                const double time = 1e9 * run.cpu_accumulated_time / static_cast<double>(run.iterations);
                double& fastest = m_times.try_emplace(run.run_name.function_name, time).first->second;
                fastest = std::min(fastest, time);
            }
        }
    }

    /// Nothing for a claim that was filtered away.
    void printRatio(const char* claim, const char* ours, const char* rival, double factor, double limit) const {
        const auto ourTime = m_times.find(ours);
        const auto rivalTime = m_times.find(rival);
        if (ourTime != m_times.end() && rivalTime != m_times.end()) {
            print(claim, ours, rival, ourTime->second / (factor * rivalTime->second), limit);
        }
    }

    /// Against a time that was set beforehand.
    void printRatio(const char* claim, const char* ours, double limitTime) const {
        const auto ourTime = m_times.find(ours);
        if (ourTime != m_times.end()) {
            print(claim, ours, "1 GB/s", ourTime->second / limitTime, 1.0);
        }
    }

private:
    static void print(const char* claim, const char* ours, const char* rival, double ratio, double limit) {
        std::printf("ratio %s: %s/%s = %.2f (limit %.2f)\n", claim, ours, rival, ratio, limit);
    }

    std::map<std::string, double> m_times;
};

template <class Function>
void registerRun(const char* name, Function function) {
    benchmark::RegisterBenchmark(name, function)->Repetitions(5)->Unit(benchmark::kMillisecond);
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    registerRun("words", wordsOurs);
    registerRun("words std::wstring", wordsRival);
    registerRun("tokens", tokensOurs);
    registerRun("tokens std::wstring", tokensRival);
    registerRun("100,000 appends", [](benchmark::State& state) { appendsOurs(state, APPENDS / 10); });
    registerRun("1,000,000 appends", [](benchmark::State& state) { appendsOurs(state, APPENDS); });
    registerRun("reserved appends", appendsReserved);
    registerRun("reserved appends std::wstring", appendsRival);
    registerRun("crc", crcOurs);
    registerRun("crc bytewise", crcRival);
    FastestReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatio("word walk", "words", "words std::wstring", 1.0, 1.0);
    reporter.printRatio("token walk", "tokens", "tokens std::wstring", 1.0, 1.0);
    // Ten times as many appends are to take ten times as long.
    reporter.printRatio("linear appends", "1,000,000 appends", "100,000 appends", 10.0, 2.0);
    reporter.printRatio("reserved appends", "reserved appends", "reserved appends std::wstring", 1.0, 2.0);
    reporter.printRatio("checksum", "crc", "crc bytewise", 1.0, 1.0);
    reporter.printRatio("checksum", "crc", static_cast<double>(CRC_BYTES));
    return 0;
}
