<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>com.blipsy.prefpanel</name>
    <message>
        <source>
Do you wish to clear the association?</source>
        <translation>
Möchten Sie die Zuordnung löschen?</translation>
    </message>
    <message>
        <source>
You will not be able to undo this operation.</source>
        <translation>
Das lässt sich nicht rückgängig machen.</translation>
    </message>
    <message>
        <source>%@
This sound cannot be found.</source>
        <translation>%@
Dieser Klang ist nicht zu finden.</translation>
    </message>
    <message>
        <source>%d clippings</source>
        <translation>%d Kürzel</translation>
    </message>
    <message>
        <source>&amp;Add Phrase</source>
        <translation>&amp;Kürzel hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Add a Clipping:</source>
        <translation>&amp;Kürzel hinzufügen:</translation>
    </message>
    <message>
        <source>&amp;Add to Favourites</source>
        <translation>Zu &amp;Favoriten</translation>
    </message>
    <message>
        <source>&amp;Add…</source>
        <translation>&amp;Hinzufügen …</translation>
    </message>
    <message>
        <source>&amp;Deselect All</source>
        <translation>&amp;Keine auswählen</translation>
    </message>
    <message>
        <source>&amp;Edit Clippings:</source>
        <translation>Kürzel &amp;bearbeiten:</translation>
    </message>
    <message>
        <source>&amp;Favourite folders:</source>
        <translation>&amp;Lieblingsordner:</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Idle-talk interval in minutes:</source>
        <translation>&amp;Abstand der Plaudereien in Minuten:</translation>
    </message>
    <message>
        <source>&amp;On</source>
        <translation>&amp;Ein</translation>
    </message>
    <message>
        <source>&amp;Pause/Resume:</source>
        <translation>&amp;Anhalten/Fortsetzen:</translation>
    </message>
    <message>
        <source>&amp;Play</source>
        <translation>&amp;Abspielen</translation>
    </message>
    <message>
        <source>&amp;Print…</source>
        <translation>&amp;Drucken …</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>&amp;Remove Phrase</source>
        <translation>Kürzel &amp;entfernen</translation>
    </message>
    <message>
        <source>&amp;Select All</source>
        <translation>&amp;Alle auswählen</translation>
    </message>
    <message>
        <source>&amp;Sounds document:</source>
        <translation>Klang&amp;dokument:</translation>
    </message>
    <message>
        <source>&apos; and will only expand in that application.</source>
        <translation>“ zugeordnet und gilt nur in diesem Programm.</translation>
    </message>
    <message>
        <source>&apos;?</source>
        <translation>“ sichern?</translation>
    </message>
    <message>
        <source>(None)</source>
        <translation>(keine)</translation>
    </message>
    <message>
        <source>(Picture)</source>
        <translation>(Bild)</translation>
    </message>
    <message>
        <source>A phrase is complete, and its sound is played, when one of these characters is typed after it:</source>
        <translation>Ein Kürzel ist vollständig, und sein Klang ertönt, wenn eines dieser Zeichen darauf folgt:</translation>
    </message>
    <message>
        <source>Add a Clipping</source>
        <translation>Kürzel hinzufügen</translation>
    </message>
    <message>
        <source>Add a new phrase to the list</source>
        <translation>Ein neues Kürzel an die Liste anhängen</translation>
    </message>
    <message>
        <source>Add the selected folder to the favourite folders</source>
        <translation>Den gewählten Ordner zu den Lieblingsordnern legen</translation>
    </message>
    <message>
        <source>Alert volume:</source>
        <translation>Warntonlautstärke:</translation>
    </message>
    <message>
        <source>Announce the tracks that are played</source>
        <translation>Gespielte Titel ansagen</translation>
    </message>
    <message>
        <source>Announcement of tracks</source>
        <translation>Ansage der Titel</translation>
    </message>
    <message>
        <source>Apostrophe</source>
        <translation>Apostroph</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>Programm</translation>
    </message>
    <message>
        <source>Applications</source>
        <translation>Programme</translation>
    </message>
    <message>
        <source>Are you sure you wish to remove this phrase?
You will not be able to undo this operation.</source>
        <translation>Möchten Sie dieses Kürzel wirklich entfernen?
Das lässt sich nicht rückgängig machen.</translation>
    </message>
    <message>
        <source>Are you sure you wish to remove this sound?</source>
        <translation>Möchten Sie diesen Klang wirklich entfernen?</translation>
    </message>
    <message>
        <source>As imported</source>
        <translation>Wie eingelesen</translation>
    </message>
    <message>
        <source>At sign</source>
        <translation>At-Zeichen</translation>
    </message>
    <message>
        <source>Backslash</source>
        <translation>Umgekehrter Schrägstrich</translation>
    </message>
    <message>
        <source>Blipsy</source>
        <translation>Blipsy</translation>
    </message>
    <message>
        <source>Blipsy 1.x Help</source>
        <translation>Blipsy 1.x Help</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Fett</translation>
    </message>
    <message>
        <source>By phrase</source>
        <translation>Nach Kürzel</translation>
    </message>
    <message>
        <source>By sound file</source>
        <translation>Nach Klangdatei</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Category</source>
        <translation>Gruppe</translation>
    </message>
    <message>
        <source>Change the idle-talk interval</source>
        <translation>Den Abstand der Plaudereien ändern</translation>
    </message>
    <message>
        <source>Choose a Sound</source>
        <translation>Klang wählen</translation>
    </message>
    <message>
        <source>Choose a Sounds Document</source>
        <translation>Klangdokument wählen</translation>
    </message>
    <message>
        <source>Choose a sound</source>
        <translation>Einen Klang wählen</translation>
    </message>
    <message>
        <source>Choose an Application</source>
        <translation>Programm wählen</translation>
    </message>
    <message>
        <source>Choose an application and add it to the list</source>
        <translation>Ein Programm wählen und in die Liste aufnehmen</translation>
    </message>
    <message>
        <source>Choose another name.</source>
        <translation>Wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>Choose or take away the sound</source>
        <translation>Klang wählen oder wegnehmen</translation>
    </message>
    <message>
        <source>Choose what is done</source>
        <translation>Wählen, was geschieht</translation>
    </message>
    <message>
        <source>Choose what is done in this application</source>
        <translation>Wählen, was in diesem Programm geschieht</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Colon</source>
        <translation>Doppelpunkt</translation>
    </message>
    <message>
        <source>Comma</source>
        <translation>Komma</translation>
    </message>
    <message>
        <source>Commands only</source>
        <translation>Nur Befehle</translation>
    </message>
    <message>
        <source>Confirm remove</source>
        <translation>Entfernen bestätigen</translation>
    </message>
    <message>
        <source>Contents of the menu</source>
        <translation>Inhalt des Menüs</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Do not expand</source>
        <translation>Nicht ersetzen</translation>
    </message>
    <message>
        <source>Do you want to replace it?</source>
        <translation>Möchten Sie es ersetzen?</translation>
    </message>
    <message>
        <source>Do you wish to save the changes you made to &apos;</source>
        <translation>Möchten Sie die Änderungen an „</translation>
    </message>
    <message>
        <source>Edit Clippings</source>
        <translation>Kürzel bearbeiten</translation>
    </message>
    <message>
        <source>Equals sign</source>
        <translation>Gleichheitszeichen</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Escape</translation>
    </message>
    <message>
        <source>Event</source>
        <translation>Ereignis</translation>
    </message>
    <message>
        <source>Event volume:</source>
        <translation>Ereignislautstärke:</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>Ereignisse</translation>
    </message>
    <message>
        <source>Every key that you press is recorded, but for Return, which presses OK, and Escape, which presses Cancel.</source>
        <translation>Jede gedrückte Taste wird aufgezeichnet, außer der Eingabetaste für OK und Escape für Abbrechen.</translation>
    </message>
    <message>
        <source>Exclamation mark</source>
        <translation>Ausrufezeichen</translation>
    </message>
    <message>
        <source>Expand using a document…</source>
        <translation>Mit einem Dokument ersetzen …</translation>
    </message>
    <message>
        <source>Favourite folders</source>
        <translation>Lieblingsordner</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>Schrift</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>Schriftgröße</translation>
    </message>
    <message>
        <source>Font size in points</source>
        <translation>Schriftgröße in Punkt</translation>
    </message>
    <message>
        <source>Ctrl+S</source>
        <translation>Ctrl+S</translation>
    </message>
    <message>
        <source>&amp;Formatting</source>
        <translation>&amp;Formatierung</translation>
    </message>
    <message>
        <source>Formatting</source>
        <translation>Formatierung</translation>
    </message>
    <message>
        <source>Greater-than sign</source>
        <translation>Größer-als-Zeichen</translation>
    </message>
    <message>
        <source>Hear a sound at once when you give it to an event</source>
        <translation>Einen Klang sofort hören, wenn er einem Ereignis gegeben wird</translation>
    </message>
    <message>
        <source>Helper</source>
        <translation>Hilfsprogramm</translation>
    </message>
    <message>
        <source>Hot Key</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>Hot key of Add a Clipping: %@</source>
        <translation>Tastenkürzel von „Kürzel hinzufügen“: %@</translation>
    </message>
    <message>
        <source>Hot key of Edit Clippings: %@</source>
        <translation>Tastenkürzel von „Kürzel bearbeiten“: %@</translation>
    </message>
    <message>
        <source>Hot key of Pause/Resume: %@</source>
        <translation>Tastenkürzel von „Anhalten/Fortsetzen“: %@</translation>
    </message>
    <message>
        <source>Hot keys</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>How long you are idle before the helper talks to you</source>
        <translation>Wie lange Sie nichts tun, bis das Hilfsprogramm zu Ihnen spricht</translation>
    </message>
    <message>
        <source>Hyphen</source>
        <translation>Bindestrich</translation>
    </message>
    <message>
        <source>Icon</source>
        <translation>Symbol</translation>
    </message>
    <message>
        <source>Idle-talk interval in minutes</source>
        <translation>Abstand der Plaudereien in Minuten</translation>
    </message>
    <message>
        <source>Importing phrases…</source>
        <translation>Kürzel werden eingelesen …</translation>
    </message>
    <message>
        <source>In every application: click to choose one</source>
        <translation>In jedem Programm: klicken, um eines zu wählen</translation>
    </message>
    <message>
        <source>In these applications Blipsy uses another document, or does not expand phrases at all.</source>
        <translation>In diesen Programmen verwendet Blipsy ein anderes Dokument oder ersetzt gar keine Kürzel.</translation>
    </message>
    <message>
        <source>&amp;Insert</source>
        <translation>E&amp;infügen</translation>
    </message>
    <message>
        <source>Insert a date, a time or another phrase</source>
        <translation>Datum, Uhrzeit oder ein anderes Kürzel einfügen</translation>
    </message>
    <message>
        <source>Insert a marker or a symbol</source>
        <translation>Eine Marke oder ein Zeichen einfügen</translation>
    </message>
    <message>
        <source>Italic</source>
        <translation>Kursiv</translation>
    </message>
    <message>
        <source>Keep Rich</source>
        <translation>Formatiert lassen</translation>
    </message>
    <message>
        <source>Keep it back after a phrase</source>
        <translation>Nach einem Kürzel zurückhalten</translation>
    </message>
    <message>
        <source>Keep the hot key as it was</source>
        <translation>Das Tastenkürzel lassen, wie es war</translation>
    </message>
    <message>
        <source>Key combination: %@</source>
        <translation>Tastenkombination: %@</translation>
    </message>
    <message>
        <source>Key recorder</source>
        <translation>Tastenaufzeichnung</translation>
    </message>
    <message>
        <source>Kind of text</source>
        <translation>Art des Textes</translation>
    </message>
    <message>
        <source>Leave this hot key without a key combination</source>
        <translation>Dieses Tastenkürzel ohne Tastenkombination lassen</translation>
    </message>
    <message>
        <source>Left brace</source>
        <translation>Geschweifte Klammer auf</translation>
    </message>
    <message>
        <source>Left bracket</source>
        <translation>Eckige Klammer auf</translation>
    </message>
    <message>
        <source>Left parenthesis</source>
        <translation>Klammer auf</translation>
    </message>
    <message>
        <source>Less-than sign</source>
        <translation>Kleiner-als-Zeichen</translation>
    </message>
    <message>
        <source>Let every character shown end a phrase</source>
        <translation>Jedes gezeigte Zeichen beendet ein Kürzel</translation>
    </message>
    <message>
        <source>Let no character end a phrase</source>
        <translation>Kein Zeichen beendet ein Kürzel</translation>
    </message>
    <message>
        <source>Make Plain</source>
        <translation>In reinen Text umwandeln</translation>
    </message>
    <message>
        <source>Menu▾ shows</source>
        <translation>Menü▾ zeigt</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>Nie</translation>
    </message>
    <message>
        <source>New sounds document…</source>
        <translation>Neues Klangdokument …</translation>
    </message>
    <message>
        <source>No applications: phrases work the same everywhere</source>
        <translation>Keine Programme: Kürzel gelten überall gleich</translation>
    </message>
    <message>
        <source>No events</source>
        <translation>Keine Ereignisse</translation>
    </message>
    <message>
        <source>No phrases</source>
        <translation>Keine Kürzel</translation>
    </message>
    <message>
        <source>No-break space</source>
        <translation>Geschütztes Leerzeichen</translation>
    </message>
    <message>
        <source>Nothing: no menu at all</source>
        <translation>Nichts: gar kein Menü</translation>
    </message>
    <message>
        <source>Number of phrases</source>
        <translation>Anzahl der Kürzel</translation>
    </message>
    <message>
        <source>O&amp;ff</source>
        <translation>A&amp;us</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Once you save the clipping as plain text, you won&apos;t be able to retrieve any attributes such as font, style or colour.</source>
        <translation>Ist das Kürzel erst als reiner Text gesichert, lassen sich Schrift, Stil oder Farbe nicht mehr zurückholen.</translation>
    </message>
    <message>
        <source>Open…</source>
        <translation>Öffnen …</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Order of the phrases</source>
        <translation>Reihenfolge der Kürzel</translation>
    </message>
    <message>
        <source>Other…</source>
        <translation>Andere …</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>Seite %1 von %2</translation>
    </message>
    <message>
        <source>Pass it on to the application</source>
        <translation>An das Programm weitergeben</translation>
    </message>
    <message>
        <source>Pause/Resume</source>
        <translation>Anhalten/Fortsetzen</translation>
    </message>
    <message>
        <source>Period</source>
        <translation>Punkt</translation>
    </message>
    <message>
        <source>Phrase</source>
        <translation>Kürzel</translation>
    </message>
    <message>
        <source>Phrases</source>
        <translation>Kürzel</translation>
    </message>
    <message>
        <source>Phrases with their sound files</source>
        <translation>Kürzel mit ihren Klangdateien</translation>
    </message>
    <message>
        <source>&amp;Plain text</source>
        <translation>Reine&amp;r Text</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
    <message>
        <source>Play sound as I drop it on event list:</source>
        <translation>Klang abspielen, wenn ich ihn auf die Ereignisliste ziehe:</translation>
    </message>
    <message>
        <source>Play the selected sound</source>
        <translation>Den gewählten Klang abspielen</translation>
    </message>
    <message>
        <source>Play the sound</source>
        <translation>Klang abspielen</translation>
    </message>
    <message>
        <source>Plus sign</source>
        <translation>Pluszeichen</translation>
    </message>
    <message>
        <source>Press the keys for “%@”.</source>
        <translation>Drücken Sie die Tasten für „%@“.</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Print Phrases</source>
        <translation>Kürzel drucken</translation>
    </message>
    <message>
        <source>Print…</source>
        <translation>Drucken …</translation>
    </message>
    <message>
        <source>Question mark</source>
        <translation>Fragezeichen</translation>
    </message>
    <message>
        <source>Quotation mark</source>
        <translation>Anführungszeichen</translation>
    </message>
    <message>
        <source>Read about the options in the help book</source>
        <translation>Im Hilfebuch über die Optionen lesen</translation>
    </message>
    <message>
        <source>Really make this plain text?</source>
        <translation>Wirklich in reinen Text umwandeln?</translation>
    </message>
    <message>
        <source>Record another key combination</source>
        <translation>Eine andere Tastenkombination aufzeichnen</translation>
    </message>
    <message>
        <source>Record another key combination. It is stored, but does nothing in this session, where no program can reserve keys for itself.</source>
        <translation>Eine andere Tastenkombination aufzeichnen. Sie wird gespeichert, bewirkt in dieser Sitzung aber nichts, weil hier kein Programm Tasten für sich reservieren kann.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Remove the selected phrase from the list</source>
        <translation>Das gewählte Kürzel aus der Liste entfernen</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>Return</source>
        <translation>Zeilenschalter</translation>
    </message>
    <message>
        <source>Ri&amp;ch text</source>
        <translation>F&amp;ormatierter Text</translation>
    </message>
    <message>
        <source>Right brace</source>
        <translation>Geschweifte Klammer zu</translation>
    </message>
    <message>
        <source>Right bracket</source>
        <translation>Eckige Klammer zu</translation>
    </message>
    <message>
        <source>Right parenthesis</source>
        <translation>Klammer zu</translation>
    </message>
    <message>
        <source>S&amp;top</source>
        <translation>&amp;Stopp</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Sichern</translation>
    </message>
    <message>
        <source>Save the text of this phrase (Ctrl+S)</source>
        <translation>Den Text dieses Kürzels sichern (Strg+S)</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Search events</source>
        <translation>Ereignisse suchen</translation>
    </message>
    <message>
        <source>Search events, categories and sounds</source>
        <translation>Ereignisse, Gruppen und Klänge suchen</translation>
    </message>
    <message>
        <source>Sections of the settings</source>
        <translation>Bereiche der Einstellungen</translation>
    </message>
    <message>
        <source>Select a phrase to see its text.</source>
        <translation>Wählen Sie ein Kürzel, um seinen Text zu sehen.</translation>
    </message>
    <message>
        <source>Semicolon</source>
        <translation>Strichpunkt</translation>
    </message>
    <message>
        <source>Set volume:</source>
        <translation>Lautstärke:</translation>
    </message>
    <message>
        <source>Show All Events</source>
        <translation>Alle Ereignisse zeigen</translation>
    </message>
    <message>
        <source>Show Events with This Sound</source>
        <translation>Ereignisse mit diesem Klang zeigen</translation>
    </message>
    <message>
        <source>Show Only This Category</source>
        <translation>Nur diese Gruppe zeigen</translation>
    </message>
    <message>
        <source>Show in the file manager</source>
        <translation>In der Dateiverwaltung zeigen</translation>
    </message>
    <message>
        <source>Show only events whose name, category or sound contains this text</source>
        <translation>Nur Ereignisse zeigen, deren Name, Gruppe oder Klang diesen Text enthält</translation>
    </message>
    <message>
        <source>Show the sound in the file manager</source>
        <translation>Den Klang in der Dateiverwaltung zeigen</translation>
    </message>
    <message>
        <source>Slash</source>
        <translation>Schrägstrich</translation>
    </message>
    <message>
        <source>Sound</source>
        <translation>Klang</translation>
    </message>
    <message>
        <source>Sound events</source>
        <translation>Klangereignisse</translation>
    </message>
    <message>
        <source>Sound files</source>
        <translation>Klangdateien</translation>
    </message>
    <message>
        <source>Sound for:</source>
        <translation>Klang für:</translation>
    </message>
    <message>
        <source>Sounds and talk</source>
        <translation>Klänge und Plaudereien</translation>
    </message>
    <message>
        <source>Sounds document</source>
        <translation>Klangdokument</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Leerzeichen</translation>
    </message>
    <message>
        <source>Start the helper now and at every login</source>
        <translation>Das Hilfsprogramm jetzt und bei jeder Anmeldung starten</translation>
    </message>
    <message>
        <source>Stop the helper and no longer start it at login</source>
        <translation>Das Hilfsprogramm beenden und bei der Anmeldung nicht mehr starten</translation>
    </message>
    <message>
        <source>Stop the sound that is playing</source>
        <translation>Den Klang anhalten</translation>
    </message>
    <message>
        <source>Strikethrough</source>
        <translation>Durchgestrichen</translation>
    </message>
    <message>
        <source>Tab</source>
        <translation>Tabulator</translation>
    </message>
    <message>
        <source>Take the selected application off the list</source>
        <translation>Das gewählte Programm aus der Liste nehmen</translation>
    </message>
    <message>
        <source>Take the sound away</source>
        <translation>Den Klang wegnehmen</translation>
    </message>
    <message>
        <source>Text color</source>
        <translation>Textfarbe</translation>
    </message>
    <message>
        <source>Text of the phrase</source>
        <translation>Text des Kürzels</translation>
    </message>
    <message>
        <source>The helper is restarted to show or hide its menu</source>
        <translation>Das Hilfsprogramm wird neu gestartet, um sein Menü zu zeigen oder zu verbergen</translation>
    </message>
    <message>
        <source>The last key press counts. Return is OK, Escape is Cancel.</source>
        <translation>Der letzte Tastendruck gilt. Eingabetaste: OK, Escape: Abbrechen.</translation>
    </message>
    <message>
        <source>The trigger character itself:</source>
        <translation>Das auslösende Zeichen selbst:</translation>
    </message>
    <message>
        <source>The volume of the selected event; with no event selected, of everything</source>
        <translation>Die Lautstärke des gewählten Ereignisses; ohne Auswahl die von allem</translation>
    </message>
    <message>
        <source>This abbreviation is associated with &apos;</source>
        <translation>Dieses Kürzel ist dem Programm „</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Title and artist</source>
        <translation>Titel und Interpret</translation>
    </message>
    <message>
        <source>Trigger characters</source>
        <translation>Auslösende Zeichen</translation>
    </message>
    <message>
        <source>Underline</source>
        <translation>Unterstrichen</translation>
    </message>
    <message>
        <source>Underscore</source>
        <translation>Unterstrich</translation>
    </message>
    <message>
        <source>Use the key combination shown</source>
        <translation>Die gezeigte Tastenkombination verwenden</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Lautstärke</translation>
    </message>
    <message>
        <source>What becomes of the trigger character</source>
        <translation>Was mit dem auslösenden Zeichen geschieht</translation>
    </message>
    <message>
        <source>What is done in it</source>
        <translation>Was darin geschieht</translation>
    </message>
    <message>
        <source>cannot find assigned sound!</source>
        <translation>Zugeordneter Klang nicht gefunden!</translation>
    </message>
    <message>
        <source>do not expand</source>
        <translation>nicht ersetzen</translation>
    </message>
    <message>
        <source>expand using: %@</source>
        <translation>ersetzen mit: %@</translation>
    </message>
    <message>
        <source>missing file</source>
        <translation>fehlende Datei</translation>
    </message>
    <message>
        <source>my new phrase</source>
        <translation>mein neues Kürzel</translation>
    </message>
    <message>
        <source>new sound set</source>
        <translation>neue Klänge</translation>
    </message>
    <message>
        <source>newabb</source>
        <translation>mein neues Kürzel</translation>
    </message>
    <message>
        <source>“%1” already exists.</source>
        <translation>„%1“ gibt es schon.</translation>
    </message>
    <message>
        <source>“%1” is a folder.</source>
        <translation>„%1“ ist ein Ordner.</translation>
    </message>
    <message>
        <source>“%1” cannot be saved here.</source>
        <translation>„%1“ kann hier nicht gesichert werden.</translation>
    </message>
    <message>
        <source>Choose another name or another folder.</source>
        <translation>Wählen Sie einen anderen Namen oder einen anderen Ordner.</translation>
    </message>
    <message>
        <source>New Sounds Document</source>
        <translation>Neues Klangdokument</translation>
    </message>
    <message>
        <source>Open a Sounds Document or Import Phrases</source>
        <translation>Klangdokument öffnen oder Kürzel importieren</translation>
    </message>
    <message>
        <source>Save the Imported Phrases</source>
        <translation>Importierte Kürzel sichern</translation>
    </message>
    <message>
        <source>The phrases cannot be printed.</source>
        <translation>Die Kürzel können nicht gedruckt werden.</translation>
    </message>
    <message>
        <source>Choose another printer or file.</source>
        <translation>Wählen Sie einen anderen Drucker oder eine andere Datei.</translation>
    </message>
    <message>
        <source>Date and Time</source>
        <translation>Datum und Uhrzeit</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Uhrzeit</translation>
    </message>
    <message>
        <source>Short date as in the settings</source>
        <translation>Kurzes Datum wie in den Einstellungen</translation>
    </message>
    <message>
        <source>Long date as in the settings</source>
        <translation>Langes Datum wie in den Einstellungen</translation>
    </message>
    <message>
        <source>Time as in the settings</source>
        <translation>Uhrzeit wie in den Einstellungen</translation>
    </message>
    <message>
        <source>Insertion point</source>
        <translation>Einfügemarke</translation>
    </message>
    <message>
        <source>Move left</source>
        <translation>Nach links</translation>
    </message>
    <message>
        <source>Move up</source>
        <translation>Nach oben</translation>
    </message>
    <message>
        <source>Move right</source>
        <translation>Nach rechts</translation>
    </message>
    <message>
        <source>Move down</source>
        <translation>Nach unten</translation>
    </message>
    <message>
        <source>Keep the trigger character</source>
        <translation>Auslösezeichen behalten</translation>
    </message>
    <message>
        <source>Leave out the trigger character</source>
        <translation>Auslösezeichen weglassen</translation>
    </message>
    <message>
        <source>– Dash</source>
        <translation>– Gedankenstrich</translation>
    </message>
    <message>
        <source>• Bullet</source>
        <translation>• Aufzählungszeichen</translation>
    </message>
    <message>
        <source>… Ellipsis</source>
        <translation>… Auslassungspunkte</translation>
    </message>
    <message>
        <source>→ Arrow</source>
        <translation>→ Pfeil</translation>
    </message>
    <message>
        <source>B</source>
        <translation>F</translation>
    </message>
    <message>
        <source>I</source>
        <translation>K</translation>
    </message>
    <message>
        <source>U</source>
        <translation>U</translation>
    </message>
    <message>
        <source>S</source>
        <translation>D</translation>
    </message>
    <message>
        <source>Align left</source>
        <translation>Linksbündig</translation>
    </message>
    <message>
        <source>Center</source>
        <translation>Zentriert</translation>
    </message>
    <message>
        <source>Align right</source>
        <translation>Rechtsbündig</translation>
    </message>
    <message>
        <source>Justify</source>
        <translation>Blocksatz</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Hinzufügen</translation>
    </message>
    <message>
        <source>What you will type</source>
        <translation>Was Sie tippen werden</translation>
    </message>
    <message>
        <source>&amp;Phrase:</source>
        <translation>&amp;Kürzel:</translation>
    </message>
    <message>
        <source>&amp;Text:</source>
        <translation>&amp;Text:</translation>
    </message>
    <message>
        <source>Add a Clipping…</source>
        <translation>Kürzel hinzufügen …</translation>
    </message>
    <message>
        <source>Edit Clippings…</source>
        <translation>Kürzel bearbeiten …</translation>
    </message>
    <message>
        <source>About Blipsy</source>
        <translation>Über Blipsy</translation>
    </message>
    <message>
        <source>Quit Blipsy</source>
        <translation>Blipsy beenden</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Plays short sounds while you type and work.</source>
        <translation>Spielt kurze Klänge, während Sie tippen und arbeiten.</translation>
    </message>
    <message>
        <source>A phrase needs at least one character.</source>
        <translation>Ein Kürzel braucht mindestens ein Zeichen.</translation>
    </message>
    <message>
        <source>A phrase is one line of text.</source>
        <translation>Ein Kürzel ist eine Zeile Text.</translation>
    </message>
    <message>
        <source>There is such a phrase already.</source>
        <translation>Dieses Kürzel gibt es schon.</translation>
    </message>
    <message>
        <source>The sounds document cannot be read.</source>
        <translation>Das Klangdokument kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The sounds document cannot be written.</source>
        <translation>Das Klangdokument kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>Blipsy is paused</source>
        <translation>Blipsy pausiert</translation>
    </message>
    <message>
        <source>It is %1.</source>
        <translation>Es ist %1.</translation>
    </message>
    <message>
        <source>Blipsy does not see what you type</source>
        <translation>Blipsy sieht nicht, was Sie tippen</translation>
    </message>
    <message>
        <source>Hot keys of another program: %1</source>
        <translation>Tasten eines anderen Programms: %1</translation>
    </message>
    <message>
        <source>Another program holds the keys. Choose others in the settings, under Options.</source>
        <translation>Ein anderes Programm belegt die Tasten. Wählen Sie in den Einstellungen unter „Optionen“ andere.</translation>
    </message>
    <message>
        <source>Another program holds this key combination, so that it does nothing here. Record another one.</source>
        <translation>Ein anderes Programm belegt diese Tastenkombination, daher bewirkt sie hier nichts. Nehmen Sie eine andere auf.</translation>
    </message>
    <message>
        <source>The selected text could not be read. Copy it, and paste it here.</source>
        <translation>Der ausgewählte Text konnte nicht gelesen werden. Kopieren Sie ihn, und fügen Sie ihn hier ein.</translation>
    </message>
    <message>
        <source>Blipsy runs outside a desktop session, and your user may not read the keyboards, so phrases and keys set nothing off.</source>
        <translation>Blipsy läuft außerhalb einer Desktop-Sitzung, und Ihr Benutzer darf die Tastaturen nicht lesen; Kürzel und Tasten lösen daher nichts aus.</translation>
    </message>
    <message>
        <source>In this session programs do not see what is typed into others, so phrases and keys set nothing off.</source>
        <translation>In dieser Sitzung sehen Programme nicht, was in andere getippt wird; Kürzel und Tasten lösen daher nichts aus.</translation>
    </message>
    <message>
        <source>Log in to an X11 session, or let your user read the input devices (on most systems: add it to the group &quot;input&quot;, and log in again). Other events are heard all the same.</source>
        <translation>Melden Sie sich in einer X11-Sitzung an, oder lassen Sie Ihren Benutzer die Eingabegeräte lesen (auf den meisten Systemen: nehmen Sie ihn in die Gruppe „input“ auf und melden Sie sich neu an). Andere Ereignisse sind trotzdem zu hören.</translation>
    </message>
    <message>
        <source>Blipsy cannot put texts into programs</source>
        <translation>Blipsy kann keine Texte in Programme einsetzen</translation>
    </message>
    <message>
        <source>Only X11 sessions let one program type into others. Here phrases are not replaced by their texts, and those chosen in the menu are just heard. Log in to an X11 session to have them inserted.</source>
        <translation>Nur in X11-Sitzungen kann ein Programm in andere tippen. Hier werden Kürzel nicht durch ihre Texte ersetzt, und im Menü gewählte sind nur zu hören. Melden Sie sich in einer X11-Sitzung an, damit sie eingesetzt werden.</translation>
    </message>
    <message>
        <source>Save the Backup As</source>
        <translation>Sicherung speichern als</translation>
    </message>
    <message>
        <source>Go back to “%1” of %2?</source>
        <translation>Zurück zu „%1“ vom %2?</translation>
    </message>
    <message>
        <source>What the document is now is kept as a backup, too.</source>
        <translation>Was das Dokument jetzt enthält, bleibt ebenfalls als Sicherung erhalten.</translation>
    </message>
    <message>
        <source>Go Back</source>
        <translation>Zurückgehen</translation>
    </message>
</context>
</TS>
