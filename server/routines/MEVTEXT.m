MEVTEXT ; Texts as users type them: made plain for storing, folded for searching, guarded in a reply
 ;
PLAIN(text,kept) ; A free text as it is filed: without GUARDED's marks, blanks for control characters but for those that are kept
 QUIT $$PRINTABLE($$UNMARKED(text),kept)
 ;
PRINTABLE(text,kept) ; The text with blanks for control characters, but for those that are kept
 NEW byte,controls
 SET controls=""
 FOR byte=0:1:31,127 SET controls=controls_$CHAR(byte)
 QUIT $TRANSLATE(text,$TRANSLATE(controls,kept),$JUSTIFY("",33))
 ;
MARK() ; U+2060, word joiner: cannot be seen, and is no blank to a reader of numbers
 QUIT $CHAR(226,129,160)
 ;
GUARDED(text) ; The text behind a mark where a client would take it for an error: blanks, a minus sign and a digit
 NEW start
 FOR start=1:1 QUIT:$EXTRACT(text,start)'=" "
 QUIT $SELECT($EXTRACT(text,start,start+2)?1"-".1"."1N.E:$$MARK_text,1:text)
 ;
UNMARKED(text) ; The text without marks: a saved text may be one that was guarded, with more typed in front
 NEW at
 IF $LENGTH(text)>20000 QUIT text ; longer than any text that is filed
 FOR  SET at=$FIND(text,$$MARK) QUIT:'at  SET text=$EXTRACT(text,1,at-4)_$EXTRACT(text,at,$LENGTH(text))
 QUIT text
 ;
BRIEF(text,most) ; The beginning of a text for a message, not cut inside a letter
 NEW cut
 SET text=$$PRINTABLE($EXTRACT(text,1,most+1),"")
 FOR cut=most:-1:most-3 QUIT:$ASCII(text,cut+1)\64'=2
 QUIT $EXTRACT(text,1,cut)
 ;
TRIM(text) ; Without the blanks at both ends
 NEW first,last
 FOR first=1:1 QUIT:$EXTRACT(text,first)'=" "
 FOR last=$LENGTH(text):-1:1 QUIT:$EXTRACT(text,last)'=" "
 QUIT $EXTRACT(text,first,last)
