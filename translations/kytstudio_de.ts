<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Arrival</name>
    <message>
        <source>The clipboard holds no molecule</source>
        <translation>Die Zwischenablage enthält kein Molekül</translation>
    </message>
    <message>
        <source>not a valid workspace</source>
        <translation>kein gültiger Arbeitsbereich</translation>
    </message>
    <message>
        <source>The text on the clipboard is too long</source>
        <translation>Der Text in der Zwischenablage ist zu lang</translation>
    </message>
    <message>
        <source>kytconvert, which reads this, is not installed</source>
        <translation>kytconvert, das dies liest, ist nicht installiert</translation>
    </message>
    <message>
        <source>Clipboard</source>
        <translation>Zwischenablage</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>too large</source>
        <translation>zu groß</translation>
    </message>
</context>
<context>
    <name>Converter</name>
    <message>
        <source>kytconvert cannot be started</source>
        <translation>kytconvert kann nicht gestartet werden</translation>
    </message>
    <message>
        <source>kytconvert took too long</source>
        <translation>kytconvert hat zu lange gebraucht</translation>
    </message>
    <message>
        <source>kytconvert failed</source>
        <translation>kytconvert ist gescheitert</translation>
    </message>
</context>
<context>
    <name>KytAtomProperties</name>
    <message>
        <source>Atom Properties</source>
        <translation>Atomeigenschaften</translation>
    </message>
    <message>
        <source>cancel</source>
        <translation>Abbruch</translation>
    </message>
    <message>
        <source>ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>&lt;b&gt;Atom &lt;/b&gt;</source>
        <translation>&lt;b&gt;Atom&lt;/b&gt;</translation>
    </message>
    <message>
        <source>&lt;b&gt;Color :&lt;/b&gt;</source>
        <translation>&lt;b&gt;Farbe:&lt;/b&gt;</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>Rot</translation>
    </message>
    <message>
        <source>Symbol</source>
        <translation>Symbol</translation>
    </message>
    <message>
        <source>Red, 0 to 255</source>
        <translation>Rot, 0 bis 255</translation>
    </message>
    <message>
        <source>Green, 0 to 255</source>
        <translation>Grün, 0 bis 255</translation>
    </message>
    <message>
        <source>Blue, 0 to 255</source>
        <translation>Blau, 0 bis 255</translation>
    </message>
</context>
<context>
    <name>KytBondProperties</name>
    <message>
        <source>Bond Properties</source>
        <translation>Bindungseigenschaften</translation>
    </message>
    <message>
        <source>cancel</source>
        <translation>Abbruch</translation>
    </message>
    <message>
        <source>ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Bond Projection Angle</source>
        <translation>Projektionswinkel</translation>
    </message>
</context>
<context>
    <name>KytStudioApp</name>
    <message>
        <source>Drawing</source>
        <translation>Zeichnung</translation>
    </message>
    <message>
        <source>Ready.</source>
        <translation>Bereit.</translation>
    </message>
    <message>
        <source>Ambiguous &quot;%1&quot; not handled</source>
        <translation>„%1“ ist mehrdeutig und wird nicht ausgeführt</translation>
    </message>
    <message>
        <source>%d Atoms</source>
        <translation>Atome: %d</translation>
    </message>
    <message>
        <source>Toggle toolbar...</source>
        <translation>Werkzeugleiste wird umgeschaltet …</translation>
    </message>
    <message>
        <source>Toggle statusbar...</source>
        <translation>Statusleiste wird umgeschaltet …</translation>
    </message>
    <message>
        <source>About...</source>
        <translation>Über KytStudio</translation>
    </message>
    <message>
        <source>Opening I3D View</source>
        <translation>I3D-Ansicht wird geöffnet</translation>
    </message>
    <message>
        <source>New File</source>
        <translation>Neue Datei</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>&amp;Neu</translation>
    </message>
    <message>
        <source>Ctrl+N</source>
        <translation>Ctrl+N</translation>
    </message>
    <message>
        <source>Creates a new document</source>
        <translation>Legt ein neues Dokument an</translation>
    </message>
    <message>
        <source>New File

Creates a new document</source>
        <translation>Neue Datei

Legt ein neues Dokument an</translation>
    </message>
    <message>
        <source>Open File</source>
        <translation>Datei öffnen</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>Ö&amp;ffnen …</translation>
    </message>
    <message>
        <source>Ctrl+O</source>
        <translation>Ctrl+O</translation>
    </message>
    <message>
        <source>Opens an existing document</source>
        <translation>Öffnet ein vorhandenes Dokument</translation>
    </message>
    <message>
        <source>Open File

Opens an existing document</source>
        <translation>Datei öffnen

Öffnet ein vorhandenes Dokument</translation>
    </message>
    <message>
        <source>Save File</source>
        <translation>Datei speichern</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Ctrl+S</source>
        <translation>Ctrl+S</translation>
    </message>
    <message>
        <source>Saves the actual document</source>
        <translation>Speichert das aktuelle Dokument</translation>
    </message>
    <message>
        <source>Save File.

Saves the actual document</source>
        <translation>Datei speichern

Speichert das aktuelle Dokument</translation>
    </message>
    <message>
        <source>Save File As</source>
        <translation>Datei speichern unter</translation>
    </message>
    <message>
        <source>Save &amp;as...</source>
        <translation>Speichern &amp;unter …</translation>
    </message>
    <message>
        <source>Saves the actual document under a new filename</source>
        <translation>Speichert das aktuelle Dokument unter einem neuen Namen</translation>
    </message>
    <message>
        <source>Save As

Saves the actual document under a new filename</source>
        <translation>Speichern unter

Speichert das aktuelle Dokument unter einem neuen Namen</translation>
    </message>
    <message>
        <source>Close File</source>
        <translation>Datei schließen</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>Ctrl+W</source>
        <translation>Ctrl+W</translation>
    </message>
    <message>
        <source>Closes the actual document</source>
        <translation>Schließt das aktuelle Dokument</translation>
    </message>
    <message>
        <source>Close File

Closes the actual document</source>
        <translation>Datei schließen

Schließt das aktuelle Dokument</translation>
    </message>
    <message>
        <source>Print File</source>
        <translation>Datei drucken</translation>
    </message>
    <message>
        <source>&amp;Print</source>
        <translation>&amp;Drucken</translation>
    </message>
    <message>
        <source>Ctrl+P</source>
        <translation>Ctrl+P</translation>
    </message>
    <message>
        <source>Prints out the actual document</source>
        <translation>Druckt das aktuelle Dokument</translation>
    </message>
    <message>
        <source>Print File

Prints out the actual document</source>
        <translation>Datei drucken

Druckt das aktuelle Dokument</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
    <message>
        <source>Quits the application</source>
        <translation>Beendet das Programm</translation>
    </message>
    <message>
        <source>Exit

Quits the application</source>
        <translation>Beenden

Beendet das Programm</translation>
    </message>
    <message>
        <source>Toolbar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>Tool&amp;bar</source>
        <translation>&amp;Werkzeugleiste</translation>
    </message>
    <message>
        <source>Enables/disables the toolbar</source>
        <translation>Blendet die Werkzeugleiste ein oder aus</translation>
    </message>
    <message>
        <source>Toolbar

Enables/disables the toolbar</source>
        <translation>Werkzeugleiste

Blendet die Werkzeugleiste ein oder aus</translation>
    </message>
    <message>
        <source>Statusbar</source>
        <translation>Statusleiste</translation>
    </message>
    <message>
        <source>&amp;Statusbar</source>
        <translation>&amp;Statusleiste</translation>
    </message>
    <message>
        <source>Enables/disables the statusbar</source>
        <translation>Blendet die Statusleiste ein oder aus</translation>
    </message>
    <message>
        <source>Statusbar

Enables/disables the statusbar</source>
        <translation>Statusleiste

Blendet die Statusleiste ein oder aus</translation>
    </message>
    <message>
        <source>MolLib</source>
        <translation>MolLib</translation>
    </message>
    <message>
        <source>&amp;MolLib</source>
        <translation>&amp;MolLib</translation>
    </message>
    <message>
        <source>Enables/disables the Library Toolbar</source>
        <translation>Blendet die Bibliotheksleiste ein oder aus</translation>
    </message>
    <message>
        <source>MolLib

Enables/disables the Library Toolbar</source>
        <translation>MolLib

Blendet die Bibliotheksleiste ein oder aus</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Info</translation>
    </message>
    <message>
        <source>&amp;About...</source>
        <translation>&amp;Info …</translation>
    </message>
    <message>
        <source>About the application</source>
        <translation>Informationen über das Programm</translation>
    </message>
    <message>
        <source>About

About the application</source>
        <translation>Info

Informationen über das Programm</translation>
    </message>
    <message>
        <source>Insert Molecule from Templates</source>
        <translation>Molekül aus Vorlagen einfügen</translation>
    </message>
    <message>
        <source>&amp;Insert Template</source>
        <translation>&amp;Vorlage einfügen</translation>
    </message>
    <message>
        <source>Ctrl+I</source>
        <translation>Ctrl+I</translation>
    </message>
    <message>
        <source>Insert Molecule

Insert Molecule from Templates</source>
        <translation>Molekül einfügen

Molekül aus Vorlagen einfügen</translation>
    </message>
    <message>
        <source>Import Molecule from File</source>
        <translation>Molekül aus Datei importieren</translation>
    </message>
    <message>
        <source>I&amp;mport</source>
        <translation>I&amp;mportieren</translation>
    </message>
    <message>
        <source>Ctrl+J</source>
        <translation>Ctrl+J</translation>
    </message>
    <message>
        <source>Import Molecule from file</source>
        <translation>Molekül aus Datei importieren</translation>
    </message>
    <message>
        <source>Import Molecule

Insert Molecule from file</source>
        <translation>Molekül importieren

Molekül aus Datei einfügen</translation>
    </message>
    <message>
        <source>View Mode</source>
        <translation>Ansichtsmodus</translation>
    </message>
    <message>
        <source>&amp;View Mode</source>
        <translation>&amp;Ansichtsmodus</translation>
    </message>
    <message>
        <source>Ctrl+V</source>
        <translation>Ctrl+V</translation>
    </message>
    <message>
        <source>View Mode

View Mode</source>
        <translation>Ansichtsmodus

Ansichtsmodus</translation>
    </message>
    <message>
        <source>Rotate Mode</source>
        <translation>Drehmodus</translation>
    </message>
    <message>
        <source>&amp;Rotate Mode</source>
        <translation>&amp;Drehmodus</translation>
    </message>
    <message>
        <source>Rotate Mode

Rotate Mode</source>
        <translation>Drehmodus

Drehmodus</translation>
    </message>
    <message>
        <source>Draw Bond</source>
        <translation>Bindung zeichnen</translation>
    </message>
    <message>
        <source>&amp;Draw Bond</source>
        <translation>&amp;Bindung zeichnen</translation>
    </message>
    <message>
        <source>Ctrl+B</source>
        <translation>Ctrl+B</translation>
    </message>
    <message>
        <source>Draw a bond</source>
        <translation>Zeichnet eine Bindung</translation>
    </message>
    <message>
        <source>Draw Bond

Draw a bond</source>
        <translation>Bindung zeichnen

Zeichnet eine Bindung</translation>
    </message>
    <message>
        <source>Add Dashed Bond</source>
        <translation>Gestrichelte Bindung hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Add Dashed Bond</source>
        <translation>&amp;Gestrichelte Bindung hinzufügen</translation>
    </message>
    <message>
        <source>Ctrl+D</source>
        <translation>Ctrl+D</translation>
    </message>
    <message>
        <source>Add Dashed Bond

Add Dashed Bond</source>
        <translation>Gestrichelte Bindung hinzufügen

Gestrichelte Bindung hinzufügen</translation>
    </message>
    <message>
        <source>Add Stereo Bond</source>
        <translation>Stereobindung hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Add Stereo Bond</source>
        <translation>S&amp;tereobindung hinzufügen</translation>
    </message>
    <message>
        <source>Add Stereo Bond

Add Stereo Bond</source>
        <translation>Stereobindung hinzufügen

Stereobindung hinzufügen</translation>
    </message>
    <message>
        <source>Zig Zag Structure</source>
        <translation>Zickzackkette</translation>
    </message>
    <message>
        <source>&amp;Zig Zag Structure</source>
        <translation>&amp;Zickzackkette</translation>
    </message>
    <message>
        <source>Ctrl+G</source>
        <translation>Ctrl+G</translation>
    </message>
    <message>
        <source>Zig Zag Structure

Zig Zag Structure</source>
        <translation>Zickzackkette

Zickzackkette</translation>
    </message>
    <message>
        <source>Delete Item</source>
        <translation>Objekt löschen</translation>
    </message>
    <message>
        <source>&amp;Delete Item</source>
        <translation>Objekt &amp;löschen</translation>
    </message>
    <message>
        <source>Ctrl+X</source>
        <translation>Ctrl+X</translation>
    </message>
    <message>
        <source>Delete Item

Delete Item</source>
        <translation>Objekt löschen

Objekt löschen</translation>
    </message>
    <message>
        <source>Fixed Length</source>
        <translation>Feste Länge</translation>
    </message>
    <message>
        <source>&amp;Fixed Length</source>
        <translation>&amp;Feste Länge</translation>
    </message>
    <message>
        <source>Fixed Length

Fixed Length</source>
        <translation>Feste Länge

Feste Länge</translation>
    </message>
    <message>
        <source>Fixed Angle</source>
        <translation>Fester Winkel</translation>
    </message>
    <message>
        <source>&amp;Fixed Angle</source>
        <translation>Fester &amp;Winkel</translation>
    </message>
    <message>
        <source>Fixed Angle

Fixed Angle</source>
        <translation>Fester Winkel

Fester Winkel</translation>
    </message>
    <message>
        <source>I3D View</source>
        <translation>I3D-Ansicht</translation>
    </message>
    <message>
        <source>&amp;I3DView</source>
        <translation>&amp;I3D-Ansicht</translation>
    </message>
    <message>
        <source>Ctrl+F</source>
        <translation>Ctrl+F</translation>
    </message>
    <message>
        <source>I3D View

3D View of Models</source>
        <translation>I3D-Ansicht

3D-Ansicht der Modelle</translation>
    </message>
    <message>
        <source>Benzene</source>
        <translation>Benzol</translation>
    </message>
    <message>
        <source>&amp;Benzene</source>
        <translation>&amp;Benzol</translation>
    </message>
    <message>
        <source>Benzene

Benzene</source>
        <translation>Benzol

Benzol</translation>
    </message>
    <message>
        <source>Cubane</source>
        <translation>Cuban</translation>
    </message>
    <message>
        <source>&amp;Cubane</source>
        <translation>&amp;Cuban</translation>
    </message>
    <message>
        <source>Cubane

Cubane</source>
        <translation>Cuban

Cuban</translation>
    </message>
    <message>
        <source>Hexane</source>
        <translation>Hexan</translation>
    </message>
    <message>
        <source>&amp;Hexane</source>
        <translation>&amp;Hexan</translation>
    </message>
    <message>
        <source>Hexane

Hexane</source>
        <translation>Hexan

Hexan</translation>
    </message>
    <message>
        <source>Megaphon</source>
        <translation>Megaphon</translation>
    </message>
    <message>
        <source>&amp;Megaphon</source>
        <translation>&amp;Megaphon</translation>
    </message>
    <message>
        <source>Megaphon

Megaphon</source>
        <translation>Megaphon

Megaphon</translation>
    </message>
    <message>
        <source>Prop</source>
        <translation>Propan</translation>
    </message>
    <message>
        <source>&amp;Prop</source>
        <translation>&amp;Propan</translation>
    </message>
    <message>
        <source>Prop

Prop</source>
        <translation>Propan

Propan</translation>
    </message>
    <message>
        <source>Water</source>
        <translation>Wasser</translation>
    </message>
    <message>
        <source>&amp;Water</source>
        <translation>&amp;Wasser</translation>
    </message>
    <message>
        <source>Water

Water</source>
        <translation>Wasser

Wasser</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Insert</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>More buttons</source>
        <translation>Weitere Schaltflächen</translation>
    </message>
    <message>
        <source>file operations</source>
        <translation>Dateifunktionen</translation>
    </message>
    <message>
        <source>draw operations</source>
        <translation>Zeichenfunktionen</translation>
    </message>
    <message>
        <source>Add Stereo Bond, towards the viewer</source>
        <translation>Stereobindung hinzufügen, zum Betrachter hin</translation>
    </message>
    <message>
        <source>Add Stereo Bond, away from the viewer</source>
        <translation>Stereobindung hinzufügen, vom Betrachter weg</translation>
    </message>
    <message>
        <source>I3D Model View</source>
        <translation>I3D-Modellansicht</translation>
    </message>
    <message>
        <source>Molecule library</source>
        <translation>Molekülbibliothek</translation>
    </message>
    <message>
        <source>Creating file</source>
        <translation>Datei wird angelegt</translation>
    </message>
    <message>
        <source>Opening file...</source>
        <translation>Datei wird geöffnet …</translation>
    </message>
    <message>
        <source>Choose a File</source>
        <translation>Datei auswählen</translation>
    </message>
    <message>
        <source>KytBench (*.kyt)</source>
        <translation>KytBench (*.kyt)</translation>
    </message>
    <message>
        <source>Opening aborted</source>
        <translation>Öffnen abgebrochen</translation>
    </message>
    <message>
        <source>Loaded document: </source>
        <translation>Geladenes Dokument: </translation>
    </message>
    <message>
        <source>Choose a Filename to save under</source>
        <translation>Dateinamen zum Speichern auswählen</translation>
    </message>
    <message>
        <source>KytBench(*.kyt)</source>
        <translation>KytBench(*.kyt)</translation>
    </message>
    <message>
        <source>Saving file...</source>
        <translation>Datei wird gespeichert …</translation>
    </message>
    <message>
        <source>noname.kyt</source>
        <translation>noname.kyt</translation>
    </message>
    <message>
        <source>Saving Done !</source>
        <translation>Gespeichert.</translation>
    </message>
    <message>
        <source>Saving file under new filename...</source>
        <translation>Datei wird unter neuem Namen gespeichert …</translation>
    </message>
    <message>
        <source>.kyt</source>
        <translation>.kyt</translation>
    </message>
    <message>
        <source>Saving As..</source>
        <translation>Speichern unter …</translation>
    </message>
    <message>
        <source>Saving aborted</source>
        <translation>Speichern abgebrochen</translation>
    </message>
    <message>
        <source>Closing file...</source>
        <translation>Datei wird geschlossen …</translation>
    </message>
    <message>
        <source>Close !</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Closing the File..
Do your want to save ur changes to File?</source>
        <translation>Die Datei wird geschlossen.
Möchten Sie Ihre Änderungen in der Datei speichern?</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Done !</source>
        <translation>Fertig.</translation>
    </message>
    <message>
        <source>Close Aborted...</source>
        <translation>Schließen abgebrochen</translation>
    </message>
    <message>
        <source>Printing...</source>
        <translation>Drucken …</translation>
    </message>
    <message>
        <source>Quit !</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Do your really want to quit?</source>
        <translation>Möchten Sie das Programm wirklich beenden?</translation>
    </message>
    <message>
        <source>Exiting application...</source>
        <translation>Programm wird beendet …</translation>
    </message>
    <message>
        <source>Loading Water..</source>
        <translation>Wasser wird geladen …</translation>
    </message>
    <message>
        <source>Water Loaded !</source>
        <translation>Wasser geladen.</translation>
    </message>
    <message>
        <source>Loading Prop..</source>
        <translation>Propan wird geladen …</translation>
    </message>
    <message>
        <source>Prop Loaded !</source>
        <translation>Propan geladen.</translation>
    </message>
    <message>
        <source>Loading Megaphon..</source>
        <translation>Megaphon wird geladen …</translation>
    </message>
    <message>
        <source>Megaphon Loaded !</source>
        <translation>Megaphon geladen.</translation>
    </message>
    <message>
        <source>Loading Hexane..</source>
        <translation>Hexan wird geladen …</translation>
    </message>
    <message>
        <source>Hexane Loaded !</source>
        <translation>Hexan geladen.</translation>
    </message>
    <message>
        <source>Loading Cubane..</source>
        <translation>Cuban wird geladen …</translation>
    </message>
    <message>
        <source>Cubane Loaded !</source>
        <translation>Cuban geladen.</translation>
    </message>
    <message>
        <source>Loading Benzene..</source>
        <translation>Benzol wird geladen …</translation>
    </message>
    <message>
        <source>Benzene Loaded !</source>
        <translation>Benzol geladen.</translation>
    </message>
    <message>
        <source>Insert Molecule..</source>
        <translation>Molekül einfügen …</translation>
    </message>
    <message>
        <source>Choose a Molecule</source>
        <translation>Molekül auswählen</translation>
    </message>
    <message>
        <source>KytFragment (*.kyf)</source>
        <translation>KytFragment (*.kyf)</translation>
    </message>
    <message>
        <source>KytStudio @PROJECT_VERSION@</source>
        <translation>KytStudio @PROJECT_VERSION@</translation>
    </message>
    <message>
        <source>KytStudio
Version @PROJECT_VERSION@
(c) 2026 by the KytStudio contributors</source>
        <translation>KytStudio
Version @PROJECT_VERSION@
© 2026 die Mitwirkenden an KytStudio</translation>
    </message>
    <message>
        <source>State of the drawing</source>
        <translation>Zustand der Zeichnung</translation>
    </message>
    <message>
        <source>depth %1</source>
        <translation>Tiefe %1</translation>
    </message>
    <message>
        <source>%1 atoms on top of each other</source>
        <translation>%1 Atome übereinander</translation>
    </message>
    <message>
        <source>Nothing to undo</source>
        <translation>Nichts rückgängig zu machen</translation>
    </message>
    <message>
        <source>Undone: %1</source>
        <translation>Rückgängig gemacht: %1</translation>
    </message>
    <message>
        <source>Nothing to redo</source>
        <translation>Nichts wiederherzustellen</translation>
    </message>
    <message>
        <source>Redone: %1</source>
        <translation>Wiederhergestellt: %1</translation>
    </message>
    <message>
        <source>%1 outside the canvas</source>
        <translation>%1 außerhalb der Zeichenfläche</translation>
    </message>
    <message>
        <source>not saved: %1</source>
        <translation>nicht gespeichert: %1</translation>
    </message>
    <message>
        <source>%1 selected</source>
        <translation>%1 ausgewählt</translation>
    </message>
    <message>
        <source>cannot be opened: %1</source>
        <translation>nicht zu öffnen: %1</translation>
    </message>
    <message>
        <source>Nothing to copy</source>
        <translation>Nichts zu kopieren</translation>
    </message>
    <message>
        <source>Copied for KytStudio only: kytconvert is not installed</source>
        <translation>Nur für KytStudio kopiert: kytconvert ist nicht installiert</translation>
    </message>
    <message>
        <source>Copied: %1 atoms</source>
        <translation>Kopiert: %1 Atome</translation>
    </message>
    <message>
        <source>The clipboard cannot be read</source>
        <translation>Die Zwischenablage kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Drop Files</source>
        <translation>Dateien ablegen</translation>
    </message>
    <message>
        <source>Still working; Escape cancels</source>
        <translation>Noch in Arbeit; Esc bricht ab</translation>
    </message>
    <message>
        <source>Reading... (Escape cancels)</source>
        <translation>Wird gelesen … (Esc bricht ab)</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Abgebrochen</translation>
    </message>
    <message>
        <source>Cannot be read: %1</source>
        <translation>Nicht lesbar: %1</translation>
    </message>
    <message>
        <source>Added: %1 atoms, without the properties of the SD file</source>
        <translation>Hinzugefügt: %1 Atome, ohne die Eigenschaften der SD-Datei</translation>
    </message>
    <message>
        <source>Added: %1 atoms</source>
        <translation>Hinzugefügt: %1 Atome</translation>
    </message>
    <message>
        <source>No molecule under the pointer</source>
        <translation>Kein Molekül unter dem Zeiger</translation>
    </message>
    <message>
        <source>The molecule is locked</source>
        <translation>Das Molekül ist gesperrt</translation>
    </message>
    <message>
        <source>kytconvert, which lays out molecules, is not installed</source>
        <translation>kytconvert, das Moleküle anordnet, ist nicht installiert</translation>
    </message>
    <message>
        <source>Cannot be laid out: %1</source>
        <translation>Nicht anzuordnen: %1</translation>
    </message>
    <message>
        <source>The molecule was changed meanwhile</source>
        <translation>Das Molekül wurde inzwischen geändert</translation>
    </message>
    <message>
        <source>Laying out... (Escape cancels)</source>
        <translation>Wird angeordnet … (Esc bricht ab)</translation>
    </message>
    <message>
        <source>Laid out: %1 atoms</source>
        <translation>Angeordnet: %1 Atome</translation>
    </message>
    <message>
        <source>unexpected result</source>
        <translation>unerwartetes Ergebnis</translation>
    </message>
    <message>
        <source>Tidy</source>
        <translation>Neu anordnen</translation>
    </message>
    <message>
        <source>copy of %1: Ctrl+Shift+O</source>
        <translation>Kopie von %1: Strg+Umschalt+O</translation>
    </message>
    <message>
        <source>No older copy</source>
        <translation>Keine ältere Kopie</translation>
    </message>
    <message>
        <source>No copy to open</source>
        <translation>Keine Kopie zum Öffnen</translation>
    </message>
    <message>
        <source>Open Copy</source>
        <translation>Kopie öffnen</translation>
    </message>
    <message>
        <source>Copy of %1 opened</source>
        <translation>Kopie von %1 geöffnet</translation>
    </message>
    <message>
        <source>Canvas

Draw and move with the left mouse button. Right-click on an atom or a wedge for its properties.

Letters: the element of the atom under the pointer, such as N or Cl
Shift+drag, Shift+click: select atoms in View Mode
Ctrl+A: select all
Delete, Backspace: delete the selected atoms, or the item under the pointer
Ctrl+C: copy the selected atoms, or the molecule under the pointer, or all
Shift+Insert, Ctrl+Shift+V: paste
Ctrl+L: lay out the molecule anew
Ctrl+Shift+O: open the newest safety copy; again: the one before
Ctrl+Z: undo
Ctrl+Shift+Z, Ctrl+Y: redo
Escape: cancel the current gesture, or clear the selection
Ctrl+wheel, Ctrl++, Ctrl+-: zoom
Ctrl+0: full size
Ctrl+9: the whole drawing
1 to 8: modes, in the order of the toolbar
9: Fixed Length
0: Fixed Angle</source>
        <translation>Zeichenfläche

Zeichnen und verschieben Sie mit der linken Maustaste. Ein Rechtsklick auf ein Atom oder einen Keil zeigt dessen Eigenschaften.

Buchstaben: das Element des Atoms unter dem Zeiger, z. B. N oder Cl
Umschalt+Ziehen, Umschalt+Klick: Atome im Ansichtsmodus auswählen
Strg+A: alles auswählen
Entf, Rücktaste: die ausgewählten Atome löschen, sonst das Objekt unter dem Zeiger
Strg+C: die ausgewählten Atome kopieren, sonst das Molekül unter dem Zeiger oder alles
Umschalt+Einfg, Strg+Umschalt+V: einfügen
Strg+L: das Molekül neu anordnen
Strg+Umschalt+O: die neueste Sicherheitskopie öffnen; noch einmal: die davor
Strg+Z: rückgängig
Strg+Umschalt+Z, Strg+Y: wiederherstellen
Esc: abbrechen oder die Auswahl aufheben
Strg+Mausrad, Strg++, Strg+-: Zoom
Strg+0: Originalgröße
Strg+9: die ganze Zeichnung
1 bis 8: Modi in der Reihenfolge der Werkzeugleiste
9: Feste Länge
0: Fester Winkel</translation>
    </message>
</context>
<context>
    <name>KytStudioDoc</name>
    <message>
        <source>noname.kyt</source>
        <translation>noname.kyt</translation>
    </message>
</context>
<context>
    <name>KytStudioView</name>
    <message>
        <source>Bond Length: %.3f  Bond Angle: %.2f</source>
        <translation>Bindungslänge: %.3f  Winkel: %.2f</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Verschieben</translation>
    </message>
    <message>
        <source>Rotate</source>
        <translation>Drehen</translation>
    </message>
    <message>
        <source>Element</source>
        <translation>Element</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Auswählen</translation>
    </message>
</context>
<context>
    <name>QFileDialog</name>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>Die Datei %1 existiert bereits.
Möchten Sie sie ersetzen?</translation>
    </message>
</context>
<context>
    <name>SaveDialog</name>
    <message>
        <source>&quot;%1&quot; is a folder.</source>
        <translation>„%1“ ist ein Ordner.</translation>
    </message>
    <message>
        <source>Saves as: %1</source>
        <translation>Speichert als: %1</translation>
    </message>
    <message>
        <source>The folder &quot;%1&quot; does not exist.</source>
        <translation>Den Ordner „%1“ gibt es nicht.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a regular file.</source>
        <translation>„%1“ ist keine reguläre Datei.</translation>
    </message>
    <message>
        <source>No write permission for &quot;%1&quot;.</source>
        <translation>Keine Schreibberechtigung für „%1“.</translation>
    </message>
</context>
</TS>
