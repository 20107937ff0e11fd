#pragma once

#include <QHostAddress>
#include <QTcpSocket>

#include <gtest/gtest.h>

/// A port of this machine that refuses every connection for as long as this lives: it is taken, so
/// that no other program can begin to listen there meanwhile.
class CRefusedPort {
public:
    CRefusedPort() { EXPECT_TRUE(m_objSocket.bind(QHostAddress::LocalHost)); }

    [[nodiscard]] quint16 Number() const { return m_objSocket.localPort(); }

private:
    QTcpSocket m_objSocket;
};
