#pragma once

#include <string_view>

namespace Devpack {

/// A document with every element and every attribute, laid out as documents are written. Every
/// attribute and text has a value of its own, which names its place.
constexpr std::string_view sampleDocument = R"(<?xml version="1.0" encoding="UTF-8"?>
<project name="project 1" xmlns="urn:devpack" xmlns:x="urn:x">
  <platform vendor="vendor 1" boardid="board id 1" name="platform 1" ipiboard="ipi 1" cfplatform="cf 1" featureRomTime="time 1">
    <version major="7" minor="3"/>
    <description>A platform &amp; more</description>
    <board name="board 1" vendor="vendor 2" fpga="fpga 1">
      <interfaces>
        <interface id="interface id 1" name="interface 1" type="interface type 1"/>
        <interface id="interface id 2" name="interface 2" type="interface type 2"/>
      </interfaces>
      <memories>
        <memory name="memory 1" type="memory type 1" size="1 GB"/>
      </memories>
      <images directory="directory 1">
        <image name="image 1" type="image type 1"/>
      </images>
      <id>
        <vendor>0x10ee</vendor>
        <device>0x9038</device>
        <subsystem>0x000e</subsystem>
      </id>
      <build_flow>flow 1</build_flow>
    </board>
    <build_flow>flow 2</build_flow>
    <host architecture="x86_64"/>
    <device name="device 1" fpgaDevice="part 1" addrWidth="64">
      <systemClocks>
        <clock port="clock port 1" frequency="100 MHz" name="clock 1"/>
      </systemClocks>
      <core name="core 1" target="target 1" type="core type 1" clockFreq="200 MHz" numComputeUnits="2">
        <kernelClocks>
          <clock port="clock port 2" frequency="300 MHz" name="clock 2"/>
        </kernelClocks>
        <kernel name="kernel 1" language="c" vlnv="vlnv 1" attributes="attributes 1" hash="hash 1" preferredWorkGroupSizeMultiple="1" workGroupSize="2" debug="true" interrupt="false" hwControlProtocol="protocol 1" countedAutoRestart="5" deadlockDetection="none" mailbox="mailbox 1" swReset="reset 1">
          <module name="module 1" instName="module instance 1" type="module type 1">
            <rtlPort name="rtl port 1" object="object 1" protocol="protocol 2"/>
            <module name="module 2" instName="module instance 2" type="module type 2">
              <module name="module 3" instName="module instance 3" type="module type 3"/>
            </module>
          </module>
          <port name="port 1" mode="master" range="0xFFFFFFFF" dataWidth="512" portType="addressable" base="0x0"/>
          <arg name="argument 1" addressQualifier="1" id="0" port="port 2" size="0x8" offset="0x10" hostOffset="0x0" hostSize="0x8" type="std::vector&lt;int&gt;&amp;" memSize="0x1000" origName="origin 1" origUse="variable"/>
          <arg name="argument 2" addressQualifier="4294967295" id="1"/>
          <compileWorkGroupSize x="1" y="2" z="3"/>
          <maxWorkGroupSize x="4" y="5" z="6"/>
          <string_table>
            <format_string id="1" value="%d &quot;text&quot;&#10;"/>
          </string_table>
          <instance name="instance 1">
            <addrRemap base="0x100" port="port 3"/>
          </instance>
          <FIFOInformation>
            <FIFOInst>
              <Name>fifo 1</Name>
              <ParentInst>parent 1</ParentInst>
              <StaticDepth>16</StaticDepth>
              <RuntimeDepth>32</RuntimeDepth>
              <InterfaceList>
                <Interface>interface 3</Interface>
              </InterfaceList>
            </FIFOInst>
          </FIFOInformation>
        </kernel>
        <connection srcType="source type 1" srcInst="source 1" srcPort="source port 1" dstType="target type 1" dstInst="target 2" dstPort="target port 1"/>
        <memories>
          <instance name="memory instance 1" size="4096" linkage="internal">
            <addrRemap base="0x200" range="0x80"/>
          </instance>
        </memories>
        <pipes>
          <instance name="pipe 1" width="32" depth="8" linkage="external"/>
        </pipes>
        <profilers>
          <instance name="profiler 1" addrOffset="0x300" numSlots="1" useCounters="true" useTrace="false" offloadType="offload 1">
            <slot name="slot 1" index="0" type="slot type 1"/>
          </instance>
        </profilers>
      </core>
    </device>
  </platform>
</project>
)";

}  // namespace Devpack
