// The colours of Orvek: what kind of word stands where. A comment may go on over lines, which the
// state of a line tells.
#include <QSyntaxHighlighter>
#include <QTextDocument>

#include <algorithm>

#include "core/symbols.h"
#include "shell/qt/q_code.h"
#include "shell/qt/q_guard.h"
#include "shell/qt/q_text.h"

namespace velora::qt {

namespace {

constexpr int kInComment = 2;

bool is_keyword(const QString &word) {
  static const QStringList words{
      QStringLiteral("tdec"), QStringLiteral("cdec"),   QStringLiteral("fdec"),
      QStringLiteral("fdef"), QStringLiteral("lambda"), QStringLiteral("lload"),
      QStringLiteral("enum"), QStringLiteral("typeop"), QStringLiteral("nonlex"),
      QStringLiteral("::="),  QStringLiteral("->")};
  return words.contains(word);
}

bool is_type(const QString &word) {
  static const QStringList words{QStringLiteral("int"), QStringLiteral("char"),
                                 QStringLiteral("real"), QStringLiteral("str"),
                                 QStringLiteral("sym")};
  return words.contains(word);
}

bool is_known(const QString &word) {
  const std::string name = narrow(word);
  return !name.empty() && name.size() < 256 && find_symbol(name.c_str(), name.size()) != nullptr;
}

class Highlighter : public QSyntaxHighlighter {
public:
  explicit Highlighter(TextPane *owner) : QSyntaxHighlighter(owner->document()), owner_(owner) {}

protected:
  void highlightBlock(const QString &line) override {
    guarded([&] { colour_line(line); });
  }

private:
  void colour_line(const QString &line) {
    qsizetype at = 0;
    if (previousBlockState() == kInComment)
      at = comment(line, 0, 0);
    else
      setCurrentBlockState(0);
    while (at < line.size())
      at = word(line, at);
  }

  // Colours a comment whose text begins at `from`; answers where it ends.
  qsizetype comment(const QString &line, qsizetype start, qsizetype from) {
    const qsizetype end = line.indexOf(QStringLiteral("*/"), from);
    const qsizetype stop = end < 0 ? line.size() : end + 2;
    setCurrentBlockState(end < 0 ? kInComment : 0);
    colour(start, stop, shades_for(owner_->palette()).comment, false, true);
    return stop;
  }

  // The token at `at`, which is coloured; answers where the next one begins.
  qsizetype word(const QString &line, qsizetype at) {
    const Shades shades = shades_for(owner_->palette());
    const QChar c = line[at];
    if (c.isSpace() || QStringLiteral("()[];").contains(c))
      return at + 1;
    if (QStringView(line).mid(at).startsWith(QLatin1String("/*")))
      return comment(line, at, at + 2);
    qsizetype end = at + 1;
    if (c == QLatin1Char('"')) {
      end = line.indexOf(QLatin1Char('"'), at + 1);
      end = end < 0 ? line.size() : end + 1;
      return colour(at, end, shades.text);
    }
    if (c == QLatin1Char('\'') && at + 2 < line.size() && line[at + 2] == c)
      return colour(at, at + 3, shades.text);
    while (end < line.size() && !line[end].isSpace() &&
           !QStringLiteral("()[];\"").contains(line[end]))
      ++end;
    const QString text = line.mid(at, end - at);
    if (c == QLatin1Char('#'))
      return colour(at, end, shades.number);
    if (c == QLatin1Char('?'))
      return colour(at, end, shades.variable);
    if (is_keyword(text))
      return colour(at, end, shades.keyword, true);
    if (is_type(text) || is_known(text))
      return colour(at, end, shades.builtin);
    return end;
  }

  qsizetype colour(qsizetype from, qsizetype to, const QColor &ink, bool bold = false,
                   bool slanted = false) {
    QTextCharFormat format;
    format.setForeground(ink);
    if (bold)
      format.setFontWeight(QFont::Bold);
    format.setFontItalic(slanted);
    setFormat(static_cast<int>(from), static_cast<int>(to - from), format);
    return to;
  }

  TextPane *owner_;
};

} // namespace

QSyntaxHighlighter *colour_words(TextPane *owner) {
  return new Highlighter(owner);
}

} // namespace velora::qt
