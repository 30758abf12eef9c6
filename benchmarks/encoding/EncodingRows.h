/* Rows "encode" and "decode": a text of `size` letters, spaces, marks and characters that are escaped becomes
 * its form encoding, or is made of it again; each call's result is a string of its own, as its user wants it,
 * which is freed again. Marks on which the contenders differ do not occur. Where a contender has no + for a
 * space, %20 is the same; digits in upper case are the same as in lower case. */
#pragma once

#include <benchmark/benchmark.h>

#include <string>

#include "support/Rows.h"
#include "support/Sizes.h"

inline constexpr size_t callsAtATime = 100;
inline constexpr Row encode{"encode", "call", encodingSizes, {}, callsAtATime};
inline constexpr Row decode{"decode", "call", encodingSizes, {}, callsAtATime};

/* Two thirds are letters and digits, an eighth spaces, the rest marks that pass (- . _) and others. */
std::string PlainText(size_t size);

/* Its form encoding, spaces as `space`. */
std::string EncodedText(size_t size, std::string_view space);

/* An encoded text with + for spaces and lower-case digits. */
std::string Normalised(const std::string& encoded);

/* `Coder` has: Text, its type of text; From(string) and To(text), between that and a string; Encode(text) and
 * Decode(text), whose results own what they hold; To of these; and how it writes a `space`. */
template <class Coder>
class EncodeWork final : public Work {
public:
    explicit EncodeWork(size_t size) : text(Coder::From(PlainText(size))) {}

    std::string Outcome() override { return Normalised(Coder::To(Coder::Encode(text))); }

    void Do() override {
        for (size_t i = 0; i < callsAtATime; ++i)
            benchmark::DoNotOptimize(Coder::Encode(text));
    }

private:
    typename Coder::Text text;
};

template <class Coder>
class DecodeWork final : public Work {
public:
    explicit DecodeWork(size_t size) : text(Coder::From(EncodedText(size, Coder::space))) {}

    std::string Outcome() override { return Coder::To(Coder::Decode(text)); }

    void Do() override {
        for (size_t i = 0; i < callsAtATime; ++i)
            benchmark::DoNotOptimize(Coder::Decode(text));
    }

private:
    typename Coder::Text text;
};

/* Enters a coder into both rows. */
template <class Coder>
class EnterCoder {
public:
    explicit EnterCoder(std::string_view contender)
        : encoding(encode, contender, MakeWork<EncodeWork<Coder>>),
          decoding(decode, contender, MakeWork<DecodeWork<Coder>>) {}

private:
    Enter encoding;
    Enter decoding;
};
