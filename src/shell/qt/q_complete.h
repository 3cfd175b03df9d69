// Completion of names in a text pane: the names that begin like the word before the caret, with
// their declarations.
#pragma once

#include <QCompleter>
#include <QStandardItemModel>

namespace velora::qt {

class TextPane;

class Completion : public QCompleter {
public:
  explicit Completion(TextPane *pane);
  // Completes the word before the caret as far as it is certain, and shows what may follow; false
  // when no name begins so.
  bool offer();
  // The word has changed while names were shown: shows those that still fit.
  void follow();

private:
  [[nodiscard]] QString word_before_caret() const;
  void insert(const QString &name);
  bool show_names(const QString &start);

  TextPane *pane_;
  QStandardItemModel names_;
};

} // namespace velora::qt
