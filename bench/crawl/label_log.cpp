// A preloaded library that logs the texts given to the window's labels, with
// no change to the program: it defines QLabel::setText, so the program's calls
// (which go through the procedure linkage table of the window module) land
// here first; each is forwarded to Qt's own QLabel::setText.
//
// Environment:
//   LABEL_LOG_FILE     where the log goes (nothing is logged without it)
//   LABEL_LOG_PATTERN  a regular expression; only labels whose objectName
//                      matches it in full are logged (default: every label)
// A line: CLOCK_MONOTONIC seconds, TAB, objectName, TAB, the text as UTF-8
// with backslash, tab and line ends escaped. The first line, "# loaded",
// proves the library was loaded; the file is written in large blocks and
// completed when the program exits normally.
//
// Build (Qt Widgets is called only through dlsym, so it is kept as a
// dependency by --no-as-needed; without it RTLD_NEXT finds nothing):
//   g++ -std=c++17 -O2 -fPIC -shared label_log.cpp -o label_log.so
//       -Wl,--no-as-needed $(pkg-config --cflags --libs Qt6Widgets) -ldl
// (one command line)
#include <dlfcn.h>
#include <time.h>

#include <QLabel>
#include <QString>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <regex>
#include <string>
#include <unordered_map>

namespace {

using RealSetText = void (*)(QLabel*, const QString&);

class Log {
public:
    Log() {
        const char* path = std::getenv("LABEL_LOG_FILE");
        if (!path || !*path) return;
        file_ = std::fopen(path, "w");
        if (!file_) return;
        std::setvbuf(file_, nullptr, _IOFBF, 1 << 20);
        const char* pattern = std::getenv("LABEL_LOG_PATTERN");
        pattern_ = std::regex(pattern && *pattern ? pattern : ".*");
        std::fputs("# loaded\n", file_);
    }
    ~Log() {
        if (!file_) return;
        std::fprintf(file_, "# calls %llu logged %llu\n", calls_, logged_);
        std::fclose(file_);
    }

    void Note(const QLabel* label, const QString& text) {
        if (!file_) return;
        timespec now{};
        clock_gettime(CLOCK_MONOTONIC, &now);
        const std::lock_guard<std::mutex> lock(mutex_);
        ++calls_;
        const QString name = label->objectName();
        auto known = matches_.find(name);
        if (known == matches_.end()) {
            const bool match = std::regex_match(name.toStdString(), pattern_);
            known = matches_.emplace(name, match).first;
        }
        if (!known->second) return;
        ++logged_;
        std::string escaped;
        for (char c : text.toStdString()) {
            if (c == '\\')
                escaped += "\\\\";
            else if (c == '\t')
                escaped += "\\t";
            else if (c == '\n')
                escaped += "\\n";
            else if (c == '\r')
                escaped += "\\r";
            else
                escaped += c;
        }
        std::fprintf(file_, "%lld.%09ld\t%s\t%s\n", static_cast<long long>(now.tv_sec), now.tv_nsec,
                     name.toUtf8().constData(), escaped.c_str());
    }

private:
    std::FILE* file_ = nullptr;
    std::regex pattern_;
    std::unordered_map<QString, bool> matches_;
    std::mutex mutex_;
    unsigned long long calls_ = 0;
    unsigned long long logged_ = 0;
};

Log& TheLog() {
    static Log log;
    return log;
}

RealSetText Real() {
    static const auto real =
        reinterpret_cast<RealSetText>(dlsym(RTLD_NEXT, "_ZN6QLabel7setTextERK7QString"));
    return real;
}

// Opened at load, so "# loaded" is written even when no label is ever set.
[[maybe_unused]] const bool opened = (TheLog(), true);

}  // namespace

void QLabel::setText(const QString& text) {
    TheLog().Note(this, text);
    Real()(this, text);
}
