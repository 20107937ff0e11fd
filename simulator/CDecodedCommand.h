#pragma once

#include "model/CItemManager.h"
#include "simulator/MCommandKind.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// A command taken apart: its kind and its fields, or what is wrong with it.
class CDecodedCommand {
public:
    struct Field {
        std::string m_strName;     ///< such as "FeedAdjustment"
        std::string m_strValue;    ///< as sent, but a free text without the bytes that fill it up
        std::string m_strMeaning;  ///< in words; empty when there are none
        bool m_bText = false;      ///< free text
        std::size_t m_iWidth = 0;  ///< how many bytes were sent
        ItemRef m_objItem;         ///< where the value is kept; null: nowhere
    };

    /// @param p_strCommand the whole command, "{" to "|}".
    /// @param p_objItems whose items the fields of a set command refer to; nothing is stored.
    CDecodedCommand(std::string_view p_strCommand, const CItemManager& p_objItems);

    [[nodiscard]] MCommandKind::Kind Kind() const { return m_iKind; }

    /// True when the printer carries the command out; else Error() says why not.
    [[nodiscard]] bool IsValid() const { return m_strError.empty(); }
    [[nodiscard]] const std::string& Error() const { return m_strError; }

    /// Every field of a valid command in the order sent; of another those before the wrong one.
    [[nodiscard]] const std::vector<Field>& Fields() const { return m_objFields; }

    /// The value of the first field of that name; empty when there is none.
    [[nodiscard]] std::string Value(std::string_view p_strName) const;

    /// One line for people: the kind's name with every field, or with the error.
    [[nodiscard]] std::string Describe() const;

private:
    void Decode(std::string_view p_strCommand, const CItemManager& p_objItems);

    MCommandKind::Kind m_iKind;
    std::vector<Field> m_objFields;
    std::string m_strRemark;
    std::string m_strError;
};
