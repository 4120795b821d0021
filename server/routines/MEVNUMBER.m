MEVNUMBER ; Numbers as users type them and as they are shown
 ;
VALUE(text) ; A number in the form in which it is filed and shown; empty for a text that is no number
 ; The forms take blanks around, a sign, a point anywhere and an exponent. What no form's bounds let pass is no number here.
 SET text=$$UPPER^MEVCODES($$TRIM^MEVTEXT(text))
 IF $LENGTH(text)>40 QUIT ""
 IF text'?.1(1"+",1"-")1(1.N.1".".N,1"."1.N).1(1"E".1(1"+",1"-")1.N) QUIT ""
 IF $TRANSLATE($PIECE(text,"E",2),"+-")>20 QUIT ""
 QUIT $$SHOWN(+text)
 ;
SHOWN(number) ; With a zero before its point: a point that is overlooked makes a tenfold number
 IF $EXTRACT(number)="." QUIT 0_number
 IF $EXTRACT(number,1,2)="-." QUIT "-0"_$EXTRACT(number,2,$LENGTH(number))
 QUIT number
 ;
BETWEEN(text,low,high) ; A number strictly between two bounds
 NEW number
 SET number=$$VALUE(text)
 IF number="" QUIT 0
 QUIT number>low&(number<high)
