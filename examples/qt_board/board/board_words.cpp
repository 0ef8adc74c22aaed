#include "board/board_words.h"

#include <iterator>

namespace viewer {

namespace {

template <typename T>
struct Word {
    T value;
    const char* text;
};

constexpr Word<LayerKind> kLayerKinds[] = {
    {LayerKind::TopCopper, "top_copper"},
    {LayerKind::InnerCopper, "inner_copper"},
    {LayerKind::BottomCopper, "bottom_copper"},
    {LayerKind::TopSilkscreen, "top_silkscreen"},
    {LayerKind::BottomSilkscreen, "bottom_silkscreen"},
};

constexpr Word<PadShape> kPadShapes[] = {
    {PadShape::Round, "round"},
    {PadShape::Rectangle, "rect"},
    {PadShape::Oval, "oval"},
};

template <typename T, std::size_t N>
QString textIn(const Word<T> (&words)[N], T value) {
    for (const Word<T>& word : words) {
        if (word.value == value) {
            return QString::fromLatin1(word.text);
        }
    }
    return {};
}

template <typename T, std::size_t N>
std::optional<T> valueIn(const Word<T> (&words)[N], const QString& text) {
    for (const Word<T>& word : words) {
        if (text == QLatin1String(word.text)) {
            return word.value;
        }
    }
    return {};
}

template <typename T, std::size_t N>
QStringList textsOf(const Word<T> (&words)[N]) {
    QStringList texts;
    for (const Word<T>& word : words) {
        texts << QString::fromLatin1(word.text);
    }
    return texts;
}

}  // namespace

QString wordOf(LayerKind kind) { return textIn(kLayerKinds, kind); }
std::optional<LayerKind> layerKindOf(const QString& word) { return valueIn(kLayerKinds, word); }
QStringList layerKindWords() { return textsOf(kLayerKinds); }

QString wordOf(PadShape shape) { return textIn(kPadShapes, shape); }
std::optional<PadShape> padShapeOf(const QString& word) { return valueIn(kPadShapes, word); }
QStringList padShapeWords() { return textsOf(kPadShapes); }

}  // namespace viewer
