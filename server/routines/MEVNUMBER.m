MEVNUMBER ; Parses numbers as users type them and formats them
 ;
VALUE(text) ; The number as it is filed and shown; empty if the text is not a number
 ; As in the forms: blanks around it, a sign, a point anywhere, an exponent. A number too large for any form is invalid.
 SET text=$$UPPER^MEVCODES($$TRIM^MEVTEXT(text))
 IF $LENGTH(text)>40 QUIT ""
 IF text'?.1(1"+",1"-")1(1.N.1".".N,1"."1.N).1(1"E".1(1"+",1"-")1.N) QUIT ""
 IF $TRANSLATE($PIECE(text,"E",2),"+-")>20 QUIT ""
 QUIT $$SHOWN(+text)
 ;
SHOWN(number) ; Adds a zero before a leading point, which is easily overlooked
 IF $EXTRACT(number)="." QUIT 0_number
 IF $EXTRACT(number,1,2)="-." QUIT "-0"_$EXTRACT(number,2,$LENGTH(number))
 QUIT number
 ;
BETWEEN(text,low,high) ; True for a number strictly between two bounds
 NEW number
 SET number=$$VALUE(text)
 IF number="" QUIT 0
 QUIT number>low&(number<high)
