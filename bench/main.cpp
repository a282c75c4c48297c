// quillon-bench: Google Benchmark's console output, then one table of the medians (or the
// single runs) with each road's ratio to its floor and the figures the targets are set in.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {

// Each road and the floor it is read against.
const std::map<std::string, std::string>& Floors() {
  static const std::map<std::string, std::string> floors = {
      {"BM_TickRoad", "BM_TickFloor"},
      {"BM_TickRoadProfile", "BM_TickFloor"},
      {"BM_ViewTickRoad", "BM_TickFloor"},
      {"BM_TickNumberFloor", "BM_TickFloor"},
  };
  return floors;
}

// The targets: a road (its median), what is measured, and the bound it must stay under.
struct Target {
  const char* road;
  const char* what;  // "cpu" (ns), "floor" (ratio), "core" (share of one core, 500 x 10/s),
                     // "bytes" (per ticket), "unchanged" (widgets repainted that did not change)
  double bound;
  const char* text;
};
const Target kTargets[] = {
    {"BM_TickRoad", "cpu", 3000, "tick road headless < 3 us"},
    {"BM_TickRoad", "floor", 2, "tick road headless < 2x its floor"},
    {"BM_KeyStroke", "cpu", 5000, "key stroke headless < 5 us"},
    {"BM_ViewTickRoad", "cpu", 40000, "tick road with the view < 40 us"},
    {"BM_ViewTickRoad", "unchanged", 0.5, "tick repaints only changed widgets"},
    {"BM_Load/500", "core", 0.10, "500 tickets x 10 ticks/s headless < 10% core"},
    {"BM_ViewLoad/500", "core", 0.50, "500 tickets x 10 ticks/s with view < 50% core"},
    {"BM_BytesPerTicket", "bytes", 32 * 1024, "headless ticket < 32 KiB"},
    {"BM_ViewBytesPerTicket", "bytes", 1024 * 1024, "ticket with view < 1 MiB"},
    {"BM_SettlementOneYear", "cpu", 20000, "settlement, 1y forward < 20 us"},
    {"BM_ViewSettlementOneYear", "cpu", 20000, "settlement, 1y forward, with view < 20 us"},
};

// Ratios shown for information under the targets: a road against a yardstick that is not its
// floor.
struct Yardstick {
  const char* road;
  const char* yardstick;
  const char* text;
};
const Yardstick kYardsticks[] = {
    {"BM_TickRoad", "BM_TickNumberFloor", "tick road / the number work its steps must do"},
};

class TableReporter : public benchmark::ConsoleReporter {
 public:
  struct Row {
    std::string name;
    double cpuNs = 0;
    double realNs = 0;
    std::map<std::string, double> counters;
  };

  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.error_occurred) continue;
      const bool aggregate = run.run_type == Run::RT_Aggregate;
      if (aggregate && run.aggregate_name != "median") continue;
      Row row;
      row.name = run.run_name.str();
      row.cpuNs = run.GetAdjustedCPUTime() * Multiplier(run.time_unit);
      row.realNs = run.GetAdjustedRealTime() * Multiplier(run.time_unit);
      for (const auto& [key, counter] : run.counters) row.counters[key] = counter.value;
      // With repetitions only the median counts; without, each run is its own row.
      auto it = index_.find(row.name);
      if (it == index_.end()) {
        index_[row.name] = rows_.size();
        rows_.push_back(row);
      } else if (aggregate) {
        rows_[it->second] = row;
      }
    }
  }

  void Finalize() override {
    ConsoleReporter::Finalize();
    std::FILE* out = stdout;
    std::fprintf(out, "\n%-28s %12s %8s  %s\n", "road", "CPU (median)", "x floor", "figures");
    std::fprintf(out, "%-28s %12s %8s  %s\n", "----", "------------", "-------", "-------");
    for (const Row& row : rows_) {
      std::string ratio = "";
      auto floor = Floors().find(BaseName(row.name));
      if (floor != Floors().end()) {
        auto f = index_.find(floor->second);
        if (f != index_.end() && rows_[f->second].cpuNs > 0) {
          char buffer[32];
          std::snprintf(buffer, sizeof buffer, "%.2f", row.cpuNs / rows_[f->second].cpuNs);
          ratio = buffer;
        }
      }
      std::string figures;
      for (const auto& [key, value] : row.counters) {
        char buffer[96];
        if (key == "per_ticket_tick") {
          // 500 tickets at 10 ticks a second each: the share of one core.
          std::snprintf(buffer, sizeof buffer, "%s=%s  500x10/s=%.1f%% core ", key.c_str(),
                        Time(value * 1e9).c_str(), value * 5000 * 100);
        } else if (key == "bytes_per_ticket") {
          std::snprintf(buffer, sizeof buffer, "%s=%.1f KiB ", key.c_str(), value / 1024);
        } else {
          std::snprintf(buffer, sizeof buffer, "%s=%.4g ", key.c_str(), value);
        }
        figures += buffer;
      }
      std::fprintf(out, "%-28s %12s %8s  %s\n", row.name.c_str(), Time(row.cpuNs).c_str(),
                   ratio.c_str(), figures.c_str());
    }
    PrintTargets(out);
    std::fflush(out);
  }

 private:
  const Row* Find(const std::string& road) const {
    for (const Row& row : rows_)
      if (row.name == road || BaseName(row.name) == road ||
          row.name.rfind(road + "/", 0) == 0)
        return &row;
    return nullptr;
  }

  void PrintTargets(std::FILE* out) const {
    std::fprintf(out, "\n%-48s %14s %14s  %s\n", "target", "measured", "bound", "met");
    std::fprintf(out, "%-48s %14s %14s  %s\n", "------", "--------", "-----", "---");
    for (const Target& t : kTargets) {
      const Row* row = Find(t.road);
      const std::string what = t.what;
      double value = 0;
      bool known = row != nullptr;
      if (known && what == "cpu") {
        value = row->cpuNs;
      } else if (known && what == "floor") {
        const Row* floor = Find(Floors().at(t.road));
        known = floor && floor->cpuNs > 0;
        if (known) value = row->cpuNs / floor->cpuNs;
      } else if (known) {
        const char* counter = what == "core"    ? "per_ticket_tick"
                              : what == "bytes" ? "bytes_per_ticket"
                                                : "unchanged_painted";
        auto it = row->counters.find(counter);
        known = it != row->counters.end();
        if (known) value = what == "core" ? it->second * 500 * 10 : it->second;
      }
      if (!known) {
        std::fprintf(out, "%-48s %14s %14s  %s\n", t.text, "not run", Show(what, t.bound).c_str(),
                     "-");
        continue;
      }
      std::fprintf(out, "%-48s %14s %14s  %s\n", t.text, Show(what, value).c_str(),
                   Show(what, t.bound).c_str(), value < t.bound ? "yes" : "NO");
    }
    for (const Yardstick& y : kYardsticks) {
      const Row* road = Find(y.road);
      const Row* yardstick = Find(y.yardstick);
      if (!road || !yardstick || yardstick->cpuNs <= 0) continue;
      std::fprintf(out, "%-48s %14s %14s  %s\n", y.text,
                   Show("floor", road->cpuNs / yardstick->cpuNs).c_str(), "", "(information)");
    }
  }

  static std::string Show(const std::string& what, double value) {
    char buffer[32];
    if (what == "cpu") return Time(value);
    if (what == "floor") std::snprintf(buffer, sizeof buffer, "%.2fx", value);
    else if (what == "core") std::snprintf(buffer, sizeof buffer, "%.1f%%", value * 100);
    else if (what == "bytes") std::snprintf(buffer, sizeof buffer, "%.1f KiB", value / 1024);
    else std::snprintf(buffer, sizeof buffer, "%.0f", value);
    return buffer;
  }

  static double Multiplier(benchmark::TimeUnit unit) {
    switch (unit) {
      case benchmark::kNanosecond: return 1;
      case benchmark::kMicrosecond: return 1e3;
      case benchmark::kMillisecond: return 1e6;
      case benchmark::kSecond: return 1e9;
    }
    return 1;
  }
  static std::string BaseName(const std::string& name) { return name.substr(0, name.find('/')); }
  static std::string Time(double ns) {
    char buffer[32];
    if (ns < 1e3) std::snprintf(buffer, sizeof buffer, "%.0f ns", ns);
    else if (ns < 1e6) std::snprintf(buffer, sizeof buffer, "%.2f us", ns / 1e3);
    else std::snprintf(buffer, sizeof buffer, "%.2f ms", ns / 1e6);
    return buffer;
  }

  std::vector<Row> rows_;
  std::map<std::string, std::size_t> index_;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  TableReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}
