#pragma once

#include <map>
#include <string>
#include <vector>

/// Reads the text format in which a monitoring system takes its metrics, and takes nothing that is
/// not written as that format says.
class CMetricsReader {
public:
    explicit CMetricsReader(const std::string& p_strText);

    /// What is wrong first; empty when nothing is.
    [[nodiscard]] const std::string& Complaint() const { return m_strComplaint; }

    /// The metrics in their order.
    [[nodiscard]] const std::vector<std::string>& Names() const { return m_strNames; }

    /// The value of a metric, and of one of its labels. Each has one sample here.
    [[nodiscard]] double Value(const std::string& p_strName) const {
        return m_objSamples.at(p_strName).m_dValue;
    }
    [[nodiscard]] std::string Label(const std::string& p_strName,
                                    const std::string& p_strLabel) const {
        return m_objSamples.at(p_strName).m_strLabels.at(p_strLabel);
    }

private:
    struct Sample {
        double m_dValue = 0;
        std::map<std::string, std::string> m_strLabels;
    };

    void TakeComment(const std::string& p_strLine);
    void TakeSample(const std::string& p_strLine);
    std::size_t TakeLabels(const std::string& p_strLine, std::size_t p_iPlace, Sample& p_objSample);
    void Expect(bool p_bRight, const std::string& p_strWhat);

    std::string m_strComplaint;
    std::string m_strHelped;  // the metric of the last HELP
    std::string m_strTyped;   // the metric of the last TYPE
    std::vector<std::string> m_strNames;
    std::map<std::string, Sample> m_objSamples;
};
