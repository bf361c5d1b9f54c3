#!/bin/bash
# IPsec: strongSwan on the device and a gateway on the peer bring up the tunnel ipsec-vpn (IKEv2
# with a pre-shared key, ESP in UDP done by charon itself); the probe and the address report read
# the real "ipsec status", through the real sudo, before, during and after it. (The replies' other
# forms are pinned from recorded status outputs by the end-to-end cases.)
. "$(dirname "$0")/../lab.sh"
lab_start

NL=$'\n'

on_device ip link set eth0 up
on_device ip addr add 10.0.0.5/24 dev eth0
on_peer ip addr add 10.0.0.1/24 dev eth0-peer
# The subnet the gateway guards must hold one of its addresses.
on_peer ip addr add 10.20.0.1/16 dev lo

expect_reply "is-ipsec-connected: daemon not started, console" \
  "${CONSOLE_START}Is ipsec connected...${NL}Ipsec is not connected.$NL" is-ipsec-connected M
expect_reply "get-ipsec-parameters: daemon not started" "$(values_reply "" "" "" "")$NL" \
  get-ipsec-parameters A

start_ipsec on_peer gateway
start_ipsec on_device device
expect_reply "is-ipsec-connected: daemon up, no tunnel" false is-ipsec-connected A
expect_ok "the tunnel comes up" on_device ipsec up ipsec-vpn
expect_reply "is-ipsec-connected: tunnel up" true is-ipsec-connected A
expect_reply "get-ipsec-parameters: the device's inner address" \
  "$(values_reply 10.10.10.1 "" "" "")$NL" get-ipsec-parameters A

expect_ok "the tunnel goes down" on_device ipsec down ipsec-vpn
expect_reply "is-ipsec-connected: tunnel down" false is-ipsec-connected A

lab_finish
