// DTrace's lines: when one is written and how it is made up. Where it goes is in trace_destination.cpp.
#include "trace/trace_destination.h"

#include <kelcl/dtrace.h>

#include <algorithm>
#include <atomic>
#include <charconv>
#include <cstring>
#include <memory>
#include <string_view>

#include <unistd.h>

namespace {

constexpr std::uint32_t indentationStep = 2;

/// Room for a line; a short one needs no allocation.
class LineStorage {
public:
    explicit LineStorage(std::size_t size)
        : large_(size <= sizeof small_ ? nullptr : new char[size]), begin_(large_ ? large_.get() : small_) {}
    LineStorage(LineStorage const&) = delete;
    LineStorage& operator=(LineStorage const&) = delete;

    char* begin() { return begin_; }

private:
    char small_[512];
    std::unique_ptr<char[]> large_;
    char* begin_;
};

char* putText(char* out, std::string_view text) { return std::copy(text.begin(), text.end(), out); }

/// `width` decimal digits, of a longer number the rightmost.
char* putNumber(char* out, unsigned long number, int width) {
    for (int place = width - 1; place >= 0; --place) {
        out[place] = static_cast<char>('0' + number % 10);
        number /= 10;
    }
    return out + width;
}

/// What every line of a text begins with.
class Lead {
public:
    Lead(unsigned long thread, bool prefixed, std::string_view marker)
        : thread_(thread), prefixed_(prefixed),
          withStack_(prefixed && std::atomic_ref(DTrace::fCheckStack).load() != 0),
          indentation_(std::atomic_ref(DTrace::uClIndent[thread]).load()), marker_(marker) {}

    std::size_t length() const {
        return (prefixed_ ? prefixLength : 0) + (withStack_ ? stackFieldLength : 0) + indentation_ +
               marker_.size();
    }

    char* put(char* out, unsigned long sequence) const {
        if (prefixed_) {
            out = putNumber(out, sequence, 8);
            *out++ = ' ';
            out = putNumber(out, std::atomic_ref(DTrace::ulClProcessId).load(), 6);
            *out++ = ':';
            out = putNumber(out, thread_, 2);
            *out++ = ' ';
        }
        if (withStack_) {
            *out++ = ' ';
            out = putNumber(out, DTrace::remainingStack(), 7);
            *out++ = ' ';
        }
        out = std::fill_n(out, indentation_, ' ');
        return putText(out, marker_);
    }

private:
    static constexpr std::size_t prefixLength = 8 + 1 + 6 + 1 + 2 + 1;
    static constexpr std::size_t stackFieldLength = 1 + 7 + 1;

    unsigned long thread_;
    bool prefixed_;
    bool withStack_;
    std::uint32_t indentation_;
    std::string_view marker_;
};

/// Copies `text` with a copy of the lead after each of its line feeds.
char* putBody(char* out, std::string_view text, std::string_view lead) {
    while (true) {
        std::size_t const feed = text.find('\n');
        if (feed == std::string_view::npos) return putText(out, text);
        out = putText(out, text.substr(0, feed + 1));
        out = putText(out, lead);
        text.remove_prefix(feed + 1);
    }
}

/// Sends the one or more lines of `text`, followed by `suffix`. A line feed is never part of a longer
/// character, so bytes will do in every locale. What can throw comes first: a text that has its number is
/// written.
void sendLines(Lead const& lead, std::string_view text, std::string_view suffix) {
    kelcl::TraceDestination const destination;
    std::size_t const leadLength = kelcl::checkedLength(lead.length());
    auto const feeds = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    std::size_t const length =
        kelcl::checkedLength(leadLength * (feeds + 1) + text.size() + suffix.size() + 1);
    LineStorage line(length + 1);
    char* const begin = line.begin();
    unsigned long const sequence = std::atomic_ref(DTrace::ulSequence).fetch_add(1);
    char* out = putBody(lead.put(begin, sequence), text, {begin, leadLength});
    out = putText(out, suffix);
    *out++ = '\n';
    *out = '\0';
    destination.send(begin);
}

void growIndentation(unsigned long thread) {
    std::atomic_ref(DTrace::uClIndent[thread]).fetch_add(indentationStep);
}

/// Never below 0, also when there are more exits than entries.
void shrinkIndentation(unsigned long thread) {
    std::atomic_ref const blanks(DTrace::uClIndent[thread]);
    std::uint32_t current = blanks.load();
    while (current >= indentationStep && !blanks.compare_exchange_weak(current, current - indentationStep))
        ;
}

/// A line number in brackets.
class LineNumberText {
public:
    explicit LineNumberText(long line) {
        *end_++ = '(';
        end_ = std::to_chars(end_, std::end(text_) - 1, line).ptr;
        *end_++ = ')';
    }
    operator std::string_view() const { return {text_, static_cast<std::size_t>(end_ - text_)}; }

private:
    char text_[24];
    char* end_ = text_;
};

} // namespace

void DTrace::writeLines(std::string_view text, std::string_view suffix, std::string_view marker) {
    unsigned long const thread = threadId();
    char const kind = marker.empty() ? '\0' : marker.front();
    if (kind == '-') shrinkIndentation(thread);
    sendLines(Lead(thread, (state() & prefixed) != 0, marker), text, suffix);
    if (kind == '+') growIndentation(thread);
}

bool DTrace::isOn() {
    if (state() == notSetUp) DTraceSetup::initialize();
    return (state() & tracingOn) != 0;
}

char const* DTrace::enter(char const* name, long line) {
    if (!isOn() || name == nullptr) return nullptr;
    if ((state() & lineNumbers) != 0 && line >= 1) {
        writeLines(name, LineNumberText(line), "+");
    } else {
        writeLines(name, {}, "+");
    }
    return name;
}

void DTrace::leave(char const* name) noexcept {
    try {
        if (isOn() && name != nullptr) writeLines(name, {}, "-");
    } catch (...) {
        // A line that cannot be made is left out: a destructor may run while another exception is on its way.
    }
}

void DTrace::writeFree(char const* text) {
    writeFree(text, text == nullptr ? 0 : kelcl::checkedLength(std::strlen(text)));
}

void DTrace::writeFree(char const* text, unsigned int length) {
    if (isOn()) writeLines({text, length}, {}, ">");
}

unsigned long DTrace::threadId() noexcept {
    std::atomic_ref(ulClProcessId).store(static_cast<unsigned long>(::getpid()));
    return 1;
}

unsigned long DTrace::remainingStack() noexcept { return 0; }

void DTrace::writeFormattedString(DString const& text, char const* marker) {
    writeLines(text, {}, marker == nullptr ? "" : marker);
}
