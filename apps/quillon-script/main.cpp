// quillon-script [--trace] [--locale NAME] [FILE]: plays a script against one ticket.

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "script_host.h"

namespace {

constexpr const char* kUsage =
    "usage: quillon-script [--trace] [--locale NAME] [FILE]\n"
    "Plays a JSON Lines script (FILE, or standard input) against one ticket and prints\n"
    "what the ticket does as JSON Lines.\n"
    "  --trace        also print the question events and the holiday library's calls\n"
    "  --locale NAME  the user's locale, such as en_US (the default) or de_DE\n"
    "  --help         print this text\n";

// A locale name as ICU takes it: letters, digits and a few separators.
bool PlausibleLocale(const std::string& name) {
  if (name.empty() || name.size() > 64) return false;
  for (char c : name) {
    bool ok = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
              c == '_' || c == '-' || c == '@' || c == '=' || c == ';' || c == '.';
    if (!ok) return false;
  }
  return true;
}

int Usage(const std::string& problem) {
  std::cerr << "quillon-script: " << problem << '\n' << kUsage;
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  quillon::script::ScriptOptions options;
  std::string file;
  bool haveFile = false;
  std::vector<std::string> args(argv + 1, argv + argc);
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if (arg == "--help" || arg == "-h") {
      std::cout << kUsage;
      return 0;
    }
    if (arg == "--trace") {
      options.trace = true;
    } else if (arg == "--locale" || arg.rfind("--locale=", 0) == 0) {
      std::string name;
      if (arg == "--locale") {
        // The word after it is its name, unless it is the next option.
        if (i + 1 == args.size() || args[i + 1].rfind('-', 0) == 0)
          return Usage("--locale needs a name");
        name = args[++i];
      } else {
        name = arg.substr(9);
      }
      if (!PlausibleLocale(name)) return Usage("not a locale name: \"" + name + "\"");
      options.locale = name;
    } else if (arg.size() > 1 && arg[0] == '-') {
      return Usage("unknown option " + arg);
    } else if (haveFile) {
      return Usage("more than one script file");
    } else {
      file = arg;
      haveFile = true;
    }
  }

  std::ifstream stream;
  if (haveFile && file != "-") {
    std::error_code error;
    if (std::filesystem::is_directory(file, error)) {
      std::cerr << "quillon-script: cannot read " << file << ": it is a directory\n";
      return 2;
    }
    stream.open(file, std::ios::binary);
    if (!stream) {
      std::cerr << "quillon-script: cannot read " << file << '\n';
      return 2;
    }
  }
  try {
    quillon::script::ScriptHost host(options);
    return host.run(stream.is_open() ? static_cast<std::istream&>(stream) : std::cin, std::cout,
                    std::cerr);
  } catch (const std::exception& e) {
    std::cout.flush();
    std::cerr << "quillon-script: " << e.what() << '\n';
    return 2;
  }
}
