#include "host/Zpy.h"

#include <unicode/translit.h>
#include <unicode/uchar.h>
#include <unicode/uscript.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "host/zpy_words.h"

namespace goodsbook::Zpy {
namespace {

// First letters of single characters, asked of ICU once each: a transliteration costs microseconds, a list
// has millions.
class Letters {
 public:
  // 'A'..'Z', '0'..'9', or `nothing` for what leaves no trace.
  char of(char16_t character) {
    std::atomic<char>& known = known_[character];
    char letter = known.load(std::memory_order_relaxed);
    if (letter == 0) {
      letter = ask(character);
      known.store(letter, std::memory_order_relaxed);
    }
    return letter;
  }

  static constexpr char nothing = 1;

 private:
  char ask(char16_t character) {
    if (character >= 0xff01 && character <= 0xff5e)
      character = static_cast<char16_t>(character - 0xfee0);  // full width
    if (character < 0x80) return plain(static_cast<char>(character));
    UErrorCode error = U_ZERO_ERROR;
    const UScriptCode script = uscript_getScript(character, &error);
    if (script != USCRIPT_HAN && script != USCRIPT_LATIN) return nothing;
    if (script == USCRIPT_LATIN && !u_isalpha(character)) return nothing;
    icu::UnicodeString text(character);
    const std::scoped_lock lock(mutex_);
    if (!transliterator_) {
      transliterator_.reset(
          icu::Transliterator::createInstance("Han-Latin; Latin-ASCII", UTRANS_FORWARD, error));
    }
    if (!transliterator_) return nothing;
    transliterator_->transliterate(text);
    return text.isEmpty() || text[0] >= 0x80 ? nothing : plain(static_cast<char>(text[0]));
  }

  static char plain(char character) {
    if (character >= 'a' && character <= 'z') return static_cast<char>(character - 'a' + 'A');
    const bool stays = (character >= 'A' && character <= 'Z') || (character >= '0' && character <= '9');
    return stays ? character : nothing;
  }

  std::array<std::atomic<char>, 0x10000> known_{};
  std::mutex mutex_;
  std::unique_ptr<icu::Transliterator> transliterator_;
};

// The words by their first character, longest first.
class Words {
 public:
  Words() {
    for (const Word& word : words) byFirst_[word.text.front()].push_back(&word);
    for (auto& [first, list] : byFirst_) {
      std::ranges::stable_sort(list, std::greater{}, [](const Word* word) { return word->text.size(); });
    }
  }

  const Word* match(std::u16string_view text) const {
    const auto found = byFirst_.find(text.front());
    if (found == byFirst_.end()) return nullptr;
    const auto word =
        std::ranges::find_if(found->second, [&](const Word* w) { return text.starts_with(w->text); });
    return word == found->second.end() ? nullptr : *word;
  }

 private:
  std::unordered_map<char16_t, std::vector<const Word*>> byFirst_;
};

}  // namespace

QString GetPY(const QString& text) {
  static Letters letters;
  static const Words table;
  QString initials;
  initials.reserve(text.size());
  for (std::u16string_view rest(reinterpret_cast<const char16_t*>(text.utf16()),
                                static_cast<std::size_t>(text.size()));
       !rest.empty();) {
    if (rest.front() >= 0x80) {
      if (const Word* word = table.match(rest)) {
        initials += QLatin1StringView(word->initials.data(), static_cast<qsizetype>(word->initials.size()));
        rest.remove_prefix(word->text.size());
        continue;
      }
    }
    const char letter = letters.of(rest.front());
    if (letter != Letters::nothing) initials += QLatin1Char(letter);
    rest.remove_prefix(1);
  }
  return initials;
}

}  // namespace goodsbook::Zpy
