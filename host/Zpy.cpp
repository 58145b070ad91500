#include "host/Zpy.h"

#include <algorithm>
#include <functional>
#include <unordered_map>
#include <vector>

#include "host/zpy_letters.h"
#include "host/zpy_words.h"

namespace goodsbook::Zpy {
namespace {

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
    const char letter = letters[rest.front()];
    if (letter != '.') initials += QLatin1Char(letter);
    rest.remove_prefix(1);
  }
  return initials;
}

}  // namespace goodsbook::Zpy
