#pragma once

#include <QCoreApplication>
#include <QTranslator>

/// While it lives every word of the toolkit that can be translated is another one: all the same,
/// or each of them new whenever it is asked for.
class CWordChanger : public QTranslator {
public:
    enum class Words { AllTheSame, EachTimeNew };

    explicit CWordChanger(Words p_iWords)
        : m_iWords(p_iWords) {
        QCoreApplication::installTranslator(this);
    }
    CWordChanger(const CWordChanger&) = delete;
    CWordChanger& operator=(const CWordChanger&) = delete;
    ~CWordChanger() override { QCoreApplication::removeTranslator(this); }

    [[nodiscard]] QString translate(const char* /*p_strContext*/, const char* /*p_strSource*/,
                                    const char* /*p_strComment*/, int /*p_iCount*/) const override {
        ++m_iAsked;
        return m_iWords == Words::AllTheSame ? QStringLiteral("word") : QString::number(m_iAsked);
    }
    [[nodiscard]] bool isEmpty() const override { return false; }

    /// How many words it has changed.
    [[nodiscard]] int Asked() const { return m_iAsked; }

private:
    Words m_iWords;
    mutable int m_iAsked = 0;
};
