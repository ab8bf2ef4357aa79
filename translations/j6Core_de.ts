<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>CStr</name>
    <message>
        <source>%1 Byte</source>
        <translation>%1 Byte</translation>
    </message>
    <message>
        <source>%1 KiB</source>
        <translation>%1 KiB</translation>
    </message>
    <message>
        <source>%1 MiB</source>
        <translation>%1 MiB</translation>
    </message>
    <message>
        <source>%1 GiB</source>
        <translation>%1 GiB</translation>
    </message>
    <message>
        <source>%1 TiB</source>
        <translation>%1 TiB</translation>
    </message>
    <message>
        <source>%1 PiB</source>
        <translation>%1 PiB</translation>
    </message>
    <message>
        <source>User</source>
        <translation>Benutzer</translation>
    </message>
    <message>
        <source>OEM</source>
        <translation>OEM</translation>
    </message>
    <message>
        <source>Admin</source>
        <translation>Administrator</translation>
    </message>
    <message>
        <source>V&amp;T Technician</source>
        <translation>V&amp;T-Techniker</translation>
    </message>
    <message>
        <source>V&amp;T Production</source>
        <translation>V&amp;T-Fertigung</translation>
    </message>
    <message>
        <source>V&amp;T Developer</source>
        <translation>V&amp;T-Entwickler</translation>
    </message>
    <message>
        <source>Unknown (%1)</source>
        <translation>Unbekannt (%1)</translation>
    </message>
    <message>
        <source>Stream ERROR while reading value &quot;%1&quot; : The data stream has read past the end of the data.</source>
        <translation>Datenstrom-FEHLER beim Lesen des Werts „%1“: Es wurde über das Ende der Daten hinaus gelesen.</translation>
    </message>
    <message>
        <source>Stream ERROR while reading value &quot;%1&quot; : The data stream has read corrupt data.</source>
        <translation>Datenstrom-FEHLER beim Lesen des Werts „%1“: Es wurden beschädigte Daten gelesen.</translation>
    </message>
    <message>
        <source>Stream ERROR while reading value &quot;%1&quot; : Unknown stream status.</source>
        <translation>Datenstrom-FEHLER beim Lesen des Werts „%1“: Unbekannter Status des Datenstroms.</translation>
    </message>
    <message>
        <source>%1 [s/n: %2]</source>
        <translation>%1 [Ser.-Nr.: %2]</translation>
    </message>
    <message>
        <source>%1 - %2</source>
        <translation>%1 - %2</translation>
    </message>
    <message>
        <source> - %1</source>
        <translation> - %1</translation>
    </message>
    <message>
        <source>[ V%1 ]</source>
        <translation>[ V%1 ]</translation>
    </message>
    <message>
        <source>[ V%1 - %2 ]</source>
        <translation>[ V%1 - %2 ]</translation>
    </message>
    <message>
        <source>%1 - %2 - %3</source>
        <translation>%1 - %2 - %3</translation>
    </message>
    <message>
        <source>%1 %2 - V%3</source>
        <translation>%1 %2 - V%3</translation>
    </message>
    <message>
        <source>Build </source>
        <translation>Build </translation>
    </message>
</context>
<context>
    <name>CTar</name>
    <message>
        <source>ERROR: You must open an archive first !</source>
        <translation>FEHLER: Zuerst muss ein Archiv geöffnet werden!</translation>
    </message>
    <message>
        <source>ERROR: Index %1 must be between the limits 0 and %2. !</source>
        <translation>FEHLER: Der Index %1 muss zwischen den Grenzen 0 und %2 liegen!</translation>
    </message>
    <message>
        <source>ERROR: %1 bytes read but %2 are expected !</source>
        <translation>FEHLER: %1 Byte gelesen, aber %2 erwartet!</translation>
    </message>
    <message>
        <source>ERROR: File &quot;%1&quot; does not exist in the archive !</source>
        <translation>FEHLER: Die Datei „%1“ ist nicht im Archiv vorhanden!</translation>
    </message>
    <message>
        <source>ERROR : This is not a tar archive. Header.magic = &quot;%1&quot; but &quot;ustar&quot; was expected !</source>
        <translation>FEHLER: Dies ist kein tar-Archiv. Header.magic = „%1“, erwartet wurde aber „ustar“!</translation>
    </message>
    <message>
        <source>ERROR : The file ist too short. Only %1 bytes read but %2 expected !</source>
        <translation>FEHLER: Die Datei ist zu kurz. Nur %1 Byte gelesen, aber %2 erwartet!</translation>
    </message>
</context>
<context>
    <name>CUnitParser</name>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>Unknown unit</source>
        <translation>Unbekannte Einheit</translation>
    </message>
    <message>
        <source>No unit</source>
        <translation>Ohne Einheit</translation>
    </message>
    <message>
        <source>Count</source>
        <translation>Anzahl</translation>
    </message>
    <message>
        <source>ms</source>
        <translation>ms</translation>
    </message>
    <message>
        <source>Time [ms]</source>
        <translation>Zeit [ms]</translation>
    </message>
    <message>
        <source>s</source>
        <translation>s</translation>
    </message>
    <message>
        <source>Time [s]</source>
        <translation>Zeit [s]</translation>
    </message>
    <message>
        <source>min</source>
        <translation>min</translation>
    </message>
    <message>
        <source>Time [min]</source>
        <translation>Zeit [min]</translation>
    </message>
    <message>
        <source>microns</source>
        <translation>µs</translation>
    </message>
    <message>
        <source>Time [microns]</source>
        <translation>Zeit [µs]</translation>
    </message>
    <message>
        <source>nanos</source>
        <translation>ns</translation>
    </message>
    <message>
        <source>Time [nanos]</source>
        <translation>Zeit [ns]</translation>
    </message>
    <message>
        <source>100microns</source>
        <translation>100 µs</translation>
    </message>
    <message>
        <source>Time [100microns]</source>
        <translation>Zeit [100 µs]</translation>
    </message>
    <message>
        <source>A</source>
        <translation>A</translation>
    </message>
    <message>
        <source>Current [A]</source>
        <translation>Strom [A]</translation>
    </message>
    <message>
        <source>mA</source>
        <translation>mA</translation>
    </message>
    <message>
        <source>Current [mA]</source>
        <translation>Strom [mA]</translation>
    </message>
    <message>
        <source>0.1 A</source>
        <translation>0,1 A</translation>
    </message>
    <message>
        <source>Current [0.1 A]</source>
        <translation>Strom [0,1 A]</translation>
    </message>
    <message>
        <source>V</source>
        <translation>V</translation>
    </message>
    <message>
        <source>Voltage [V]</source>
        <translation>Spannung [V]</translation>
    </message>
    <message>
        <source>mV</source>
        <translation>mV</translation>
    </message>
    <message>
        <source>Voltage [mV]</source>
        <translation>Spannung [mV]</translation>
    </message>
    <message>
        <source>0.1 V</source>
        <translation>0,1 V</translation>
    </message>
    <message>
        <source>Voltage [0.1 V]</source>
        <translation>Spannung [0,1 V]</translation>
    </message>
    <message>
        <source>rpm</source>
        <translation>1/min</translation>
    </message>
    <message>
        <source>Speed [RPM]</source>
        <translation>Drehzahl [1/min]</translation>
    </message>
    <message>
        <source>Hz</source>
        <translation>Hz</translation>
    </message>
    <message>
        <source>Speed [Hz]</source>
        <translation>Drehzahl [Hz]</translation>
    </message>
    <message>
        <source>mm_per_s</source>
        <translation>mm/s</translation>
    </message>
    <message>
        <source>Speed [mm_per_s]</source>
        <translation>Geschwindigkeit [mm/s]</translation>
    </message>
    <message>
        <source>inc_per_s</source>
        <translation>Ink/s</translation>
    </message>
    <message>
        <source>Speed [inc_per_s]</source>
        <translation>Geschwindigkeit [Ink/s]</translation>
    </message>
    <message>
        <source>W</source>
        <translation>W</translation>
    </message>
    <message>
        <source>Power [W]</source>
        <translation>Leistung [W]</translation>
    </message>
    <message>
        <source>kW</source>
        <translation>kW</translation>
    </message>
    <message>
        <source>Power [kW]</source>
        <translation>Leistung [kW]</translation>
    </message>
    <message>
        <source>VA</source>
        <translation>VA</translation>
    </message>
    <message>
        <source>Apparent Power [VA]</source>
        <translation>Scheinleistung [VA]</translation>
    </message>
    <message>
        <source>kVA</source>
        <translation>kVA</translation>
    </message>
    <message>
        <source>Apparent Power [kVA]</source>
        <translation>Scheinleistung [kVA]</translation>
    </message>
    <message>
        <source>Ws</source>
        <translation>Ws</translation>
    </message>
    <message>
        <source>Electrical Power [Ws]</source>
        <translation>Elektrische Arbeit [Ws]</translation>
    </message>
    <message>
        <source>0.1 kW</source>
        <translation>0,1 kW</translation>
    </message>
    <message>
        <source>Power [0.1 kW]</source>
        <translation>Leistung [0,1 kW]</translation>
    </message>
    <message>
        <source>Frequency [Hz]</source>
        <translation>Frequenz [Hz]</translation>
    </message>
    <message>
        <source>kHz</source>
        <translation>kHz</translation>
    </message>
    <message>
        <source>Frequency [kHz]</source>
        <translation>Frequenz [kHz]</translation>
    </message>
    <message>
        <source>MHz</source>
        <translation>MHz</translation>
    </message>
    <message>
        <source>Frequency [MHz]</source>
        <translation>Frequenz [MHz]</translation>
    </message>
    <message>
        <source>0.1 Hz</source>
        <translation>0,1 Hz</translation>
    </message>
    <message>
        <source>Frequency [0.1 Hz]</source>
        <translation>Frequenz [0,1 Hz]</translation>
    </message>
    <message>
        <source>micronm</source>
        <translation>µm</translation>
    </message>
    <message>
        <source>Position [micronm]</source>
        <translation>Position [µm]</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>mm</translation>
    </message>
    <message>
        <source>Position [mm]</source>
        <translation>Position [mm]</translation>
    </message>
    <message>
        <source>Revolution</source>
        <translation>Umdrehungen</translation>
    </message>
    <message>
        <source>Position [Revolution]</source>
        <translation>Position [Umdrehungen]</translation>
    </message>
    <message>
        <source>Counts</source>
        <translation>Inkremente</translation>
    </message>
    <message>
        <source>Position [Counts]</source>
        <translation>Position [Inkremente]</translation>
    </message>
    <message>
        <source>degree</source>
        <translation>Grad</translation>
    </message>
    <message>
        <source>Temperature [degree]</source>
        <translation>Temperatur [Grad]</translation>
    </message>
    <message>
        <source>mH</source>
        <translation>mH</translation>
    </message>
    <message>
        <source>Inductance [mH]</source>
        <translation>Induktivität [mH]</translation>
    </message>
    <message>
        <source>micronF</source>
        <translation>µF</translation>
    </message>
    <message>
        <source>Capacity [micronF]</source>
        <translation>Kapazität [µF]</translation>
    </message>
    <message>
        <source>Ohm</source>
        <translation>Ohm</translation>
    </message>
    <message>
        <source>Resistor [Ohm]</source>
        <translation>Widerstand [Ohm]</translation>
    </message>
    <message>
        <source>Nm</source>
        <translation>Nm</translation>
    </message>
    <message>
        <source>Torque [Nm]</source>
        <translation>Drehmoment [Nm]</translation>
    </message>
    <message>
        <source>1s2</source>
        <translation>1/s²</translation>
    </message>
    <message>
        <source>Acceleration [1s2]</source>
        <translation>Beschleunigung [1/s²]</translation>
    </message>
    <message>
        <source>v_per_a</source>
        <translation>V/A</translation>
    </message>
    <message>
        <source>Amplification [v_per_a]</source>
        <translation>Verstärkung [V/A]</translation>
    </message>
    <message>
        <source>mnm_per_rpm</source>
        <translation>mNm/(1/min)</translation>
    </message>
    <message>
        <source>Amplification [mnm_per_rpm]</source>
        <translation>Verstärkung [mNm/(1/min)]</translation>
    </message>
    <message>
        <source>angle_degree</source>
        <translation>°</translation>
    </message>
    <message>
        <source>Angle [angle_degree]</source>
        <translation>Winkel [°]</translation>
    </message>
    <message>
        <source>Nm/A</source>
        <translation>Nm/A</translation>
    </message>
    <message>
        <source>Torque constant [Nm/A]</source>
        <translation>Drehmomentkonstante [Nm/A]</translation>
    </message>
    <message>
        <source>kg_cm2</source>
        <translation>kg·cm²</translation>
    </message>
    <message>
        <source>Mass moment of inertia [kg_cm2]</source>
        <translation>Massenträgheitsmoment [kg·cm²]</translation>
    </message>
    <message>
        <source>V_krpm</source>
        <translation>V/(1000/min)</translation>
    </message>
    <message>
        <source>Voltage constant [V_krpm]</source>
        <translation>Spannungskonstante [V/(1000/min)]</translation>
    </message>
    <message>
        <source>mNm</source>
        <translation>mNm</translation>
    </message>
    <message>
        <source>Torque [mNm]</source>
        <translation>Drehmoment [mNm]</translation>
    </message>
    <message>
        <source>mms2</source>
        <translation>mm/s²</translation>
    </message>
    <message>
        <source>Acceleration [mms2]</source>
        <translation>Beschleunigung [mm/s²]</translation>
    </message>
    <message>
        <source>kg</source>
        <translation>kg</translation>
    </message>
    <message>
        <source>Mass [kg]</source>
        <translation>Masse [kg]</translation>
    </message>
    <message>
        <source>n_per_a</source>
        <translation>N/A</translation>
    </message>
    <message>
        <source>Force [n_per_a]</source>
        <translation>Kraftkonstante [N/A]</translation>
    </message>
    <message>
        <source>N</source>
        <translation>N</translation>
    </message>
    <message>
        <source>Force [N]</source>
        <translation>Kraft [N]</translation>
    </message>
    <message>
        <source>v_per_m_per_s</source>
        <translation>V/(m/s)</translation>
    </message>
    <message>
        <source>Voltage constant [v_per_m_per_s]</source>
        <translation>Spannungskonstante [V/(m/s)]</translation>
    </message>
    <message>
        <source>mn_per_mm_per_s</source>
        <translation>mN/(mm/s)</translation>
    </message>
    <message>
        <source>Amplification [mn_per_mm_per_s]</source>
        <translation>Verstärkung [mN/(mm/s)]</translation>
    </message>
    <message>
        <source>mN</source>
        <translation>mN</translation>
    </message>
    <message>
        <source>Force [mN]</source>
        <translation>Kraft [mN]</translation>
    </message>
    <message>
        <source>percent</source>
        <translation>%</translation>
    </message>
    <message>
        <source>Percent [percent]</source>
        <translation>Prozent [%]</translation>
    </message>
    <message>
        <source>permill</source>
        <translation>‰</translation>
    </message>
    <message>
        <source>Permill [permill]</source>
        <translation>Promille [‰]</translation>
    </message>
    <message>
        <source>percent_s</source>
        <translation>%/s</translation>
    </message>
    <message>
        <source>Percent per second [percent_s]</source>
        <translation>Prozent pro Sekunde [%/s]</translation>
    </message>
    <message>
        <source>permill_s</source>
        <translation>‰/s</translation>
    </message>
    <message>
        <source>Permill per second [permill_s]</source>
        <translation>Promille pro Sekunde [‰/s]</translation>
    </message>
    <message>
        <source>inc_s2</source>
        <translation>Ink/s²</translation>
    </message>
    <message>
        <source>Acceleration [inc_s2]</source>
        <translation>Beschleunigung [Ink/s²]</translation>
    </message>
    <message>
        <source>0.1 degree</source>
        <translation>0,1 Grad</translation>
    </message>
    <message>
        <source>Temperature [0.1 degree]</source>
        <translation>Temperatur [0,1 Grad]</translation>
    </message>
    <message>
        <source>hz_per_a</source>
        <translation>Hz/A</translation>
    </message>
    <message>
        <source>Amplification [hz_per_a]</source>
        <translation>Verstärkung [Hz/A]</translation>
    </message>
    <message>
        <source>degree_per_khz</source>
        <translation>°/kHz</translation>
    </message>
    <message>
        <source>Degree per kHz [degree_per_khz]</source>
        <translation>Grad pro kHz [°/kHz]</translation>
    </message>
    <message>
        <source>DS402 Record Type 01</source>
        <translation>DS402-Record Typ 01</translation>
    </message>
    <message>
        <source>DS402 I16 Factor Array Type 01</source>
        <translation>DS402-I16-Array Typ 01: Faktoren</translation>
    </message>
    <message>
        <source>DS402 I32 Factor Array Type 02</source>
        <translation>DS402-I32-Array Typ 02: Faktoren</translation>
    </message>
    <message>
        <source>DS402 I32 Position Limit Array Type 03</source>
        <translation>DS402-I32-Array Typ 03: Positionsgrenzen</translation>
    </message>
    <message>
        <source>DS402 U32 Position Encoder Array Type 04</source>
        <translation>DS402-U32-Array Typ 04: Lagegeber</translation>
    </message>
    <message>
        <source>DS402 U32 Velocity Encoder Array Type 05</source>
        <translation>DS402-U32-Array Typ 05: Geschwindigkeitsgeber</translation>
    </message>
    <message>
        <source>DS402 U32 Gear Ratio Array Type 06</source>
        <translation>DS402-U32-Array Typ 06: Getriebeübersetzung</translation>
    </message>
    <message>
        <source>DS402 U32 Feed Constant Array Type 07</source>
        <translation>DS402-U32-Array Typ 07: Vorschubkonstante</translation>
    </message>
    <message>
        <source>DS402 U32 Factor Array Type 08</source>
        <translation>DS402-U32-Array Typ 08: Faktoren</translation>
    </message>
    <message>
        <source>DS402 U32 Homing Speed Array Type 09</source>
        <translation>DS402-U32-Array Typ 09: Referenzfahrtgeschwindigkeiten</translation>
    </message>
    <message>
        <source>DS402 U32 Digital IO Array Type 10</source>
        <translation>DS402-U32-Array Typ 10: Digitale Ein-/Ausgänge</translation>
    </message>
</context>
</TS>
