<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>MainMenus</name>
    <message>
        <source>&lt;h3&gt;Quillo %1&lt;/h3&gt;&lt;p&gt;A desktop remote control for qBittorrent.&lt;/p&gt;&lt;p&gt;Build %2, Qt %3&lt;/p&gt;&lt;p&gt;Licensed under the GNU General Public License, version 3 or later.&lt;/p&gt;</source>
        <translation>&lt;h3&gt;Quillo %1&lt;/h3&gt;&lt;p&gt;Eine Desktop-Fernsteuerung für qBittorrent.&lt;/p&gt;&lt;p&gt;Build %2, Qt %3&lt;/p&gt;&lt;p&gt;Lizenziert unter der GNU General Public License, Version 3 oder später.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
    <message>
        <source>Filter torrents</source>
        <translation>Torrents filtern</translation>
    </message>
    <message>
        <source>Preferences...</source>
        <translation>Einstellungen...</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>Show Sidebar</source>
        <translation>Seitenleiste anzeigen</translation>
    </message>
    <message>
        <source>Show Torrent Details</source>
        <translation>Torrent-Details anzeigen</translation>
    </message>
    <message>
        <source>Show Status Bar</source>
        <translation>Statusleiste anzeigen</translation>
    </message>
    <message>
        <source>Show Toolbar</source>
        <translation>Werkzeugleiste anzeigen</translation>
    </message>
    <message>
        <source>Torrent</source>
        <translation>Torrent</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>Server</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Check for Updates</source>
        <translation>Nach Aktualisierungen suchen</translation>
    </message>
    <message>
        <source>About Quillo</source>
        <translation>Über Quillo</translation>
    </message>
</context>
<context>
    <name>TntActions</name>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Category</source>
        <translation>Kategorie</translation>
    </message>
    <message>
        <source>Tags</source>
        <translation>Tags</translation>
    </message>
    <message>
        <source>Add Torrent Files</source>
        <translation>Torrent-Dateien hinzufügen</translation>
    </message>
    <message>
        <source>Add Links</source>
        <translation>Links hinzufügen</translation>
    </message>
    <message>
        <source>Remove with Files</source>
        <translation>Mit Dateien entfernen</translation>
    </message>
    <message>
        <source>Minimum priority</source>
        <translation>Niedrigste Priorität</translation>
    </message>
    <message>
        <source>Decrease priority</source>
        <translation>Priorität verringern</translation>
    </message>
    <message>
        <source>Increase priority</source>
        <translation>Priorität erhöhen</translation>
    </message>
    <message>
        <source>Maximum priority</source>
        <translation>Höchste Priorität</translation>
    </message>
    <message>
        <source>Force start</source>
        <translation>Start erzwingen</translation>
    </message>
    <message>
        <source>Force reannounce</source>
        <translation>Erneute Ankündigung erzwingen</translation>
    </message>
    <message>
        <source>Force recheck</source>
        <translation>Erneute Überprüfung erzwingen</translation>
    </message>
    <message>
        <source>Rename...</source>
        <translation>Umbenennen...</translation>
    </message>
    <message>
        <source>Set location...</source>
        <translation>Speicherort ändern...</translation>
    </message>
    <message>
        <source>Export .torrent...</source>
        <translation>.torrent exportieren...</translation>
    </message>
    <message>
        <source>Add trackers...</source>
        <translation>Tracker hinzufügen...</translation>
    </message>
    <message>
        <source>Add peers...</source>
        <translation>Peers hinzufügen...</translation>
    </message>
    <message>
        <source>Limit download rate...</source>
        <translation>Downloadrate begrenzen...</translation>
    </message>
    <message>
        <source>Limit upload rate...</source>
        <translation>Uploadrate begrenzen...</translation>
    </message>
    <message>
        <source>Limit share ratio...</source>
        <translation>Verhältnis begrenzen...</translation>
    </message>
    <message>
        <source>Global Download Limit...</source>
        <translation>Globale Downloadbegrenzung...</translation>
    </message>
    <message>
        <source>Global Upload Limit...</source>
        <translation>Globale Uploadbegrenzung...</translation>
    </message>
    <message>
        <source>Shut Down Server...</source>
        <translation>Server herunterfahren...</translation>
    </message>
    <message>
        <source>Statistics...</source>
        <translation>Statistiken...</translation>
    </message>
    <message>
        <source>Alternative Speed Limits</source>
        <translation>Alternative Geschwindigkeitsbegrenzungen</translation>
    </message>
    <message>
        <source>Show in File Manager</source>
        <translation>Im Dateimanager anzeigen</translation>
    </message>
    <message>
        <source>Automatic torrent management</source>
        <translation>Automatisches Torrent-Management</translation>
    </message>
    <message>
        <source>Download first and last pieces first</source>
        <translation>Erste und letzte Teile zuerst laden</translation>
    </message>
    <message>
        <source>Download in sequential order</source>
        <translation>Der Reihe nach herunterladen</translation>
    </message>
    <message>
        <source>Super seeding mode</source>
        <translation>Super-Seeding-Modus</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Hash</source>
        <translation>Hash</translation>
    </message>
    <message>
        <source>Magnet link</source>
        <translation>Magnet-Link</translation>
    </message>
    <message>
        <source>Start Torrents</source>
        <translation>Torrents starten</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Starten</translation>
    </message>
    <message>
        <source>Stop Torrents</source>
        <translation>Torrents stoppen</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stoppen</translation>
    </message>
    <message>
        <source>Remove Torrents</source>
        <translation>Torrents entfernen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Show in File Manager(not configured)</source>
        <translation>Im Dateimanager anzeigen (nicht eingerichtet)</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Remove all</source>
        <translation>Alle entfernen</translation>
    </message>
    <message>
        <source>Add tags...</source>
        <translation>Tags hinzufügen...</translation>
    </message>
</context>
<context>
    <name>TntMetadata</name>
    <message>
        <source>n/a</source>
        <comment>not available</comment>
        <translation>k. A.</translation>
    </message>
</context>
</TS>
